#include "plugins/3dsmax/shell/report_delivery.h"

#include "platform/host_function.h"
#include "plugins/3dsmax/export/report_json.h"
#include "plugins/3dsmax/export/report_log.h"
#include "plugins/3dsmax/shell/host_border.h"

ReportDelivery::~ReportDelivery() {
    WithoutExceptions([this] { LogReport(notes_); });
    WithoutExceptions([this] {
        if (auto* const take_report = reinterpret_cast<HostExportReport*>(
                platform::find_host_function(kHostExportReport))) {
            take_report(ReportJson(notes_, command_).c_str());
        }
    });
}
