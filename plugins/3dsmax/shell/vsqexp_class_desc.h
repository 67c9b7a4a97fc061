#pragma once

#include "plugins/3dsmax/export/host.h"

/// Describes the library's only plug-in, `VSQExp`, and its actions to the host.
class VSQExpClassDesc final : public ClassDesc {
public:
    int IsPublic() override { return 1; }
    void* Create(BOOL loading = FALSE) override;
    const MCHAR* ClassName() override;
    const MCHAR* NonLocalizedClassName() override;
    SClass_ID SuperClassID() override { return GUP_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(0x066E4F53, 0x422547A2); }
    const MCHAR* Category() override;

    int NumActionTables() override { return 1; }
    /// Created on the first call; the host owns it from then on.
    ActionTable* GetActionTable(int i) override;

private:
    ActionTable* action_table_ = nullptr;
};

/// The library's only class description.
VSQExpClassDesc* GetVSQExpClassDesc();
