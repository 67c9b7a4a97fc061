#pragma once

#include <cstdint>

class qorScene_api;

/// What the renderer's live library promises. The library is closed and was built on its own, so
/// the order of the virtual operations is what binds.
namespace live_library {

/// Finds running renderers and looks into them. Texts belong to the library, can be null, and are
/// read before the next call.
class QueryApi {
public:
    /// The running renderers as an XML document.
    virtual const char* instances_xml() = 0;
    virtual bool connect(std::int64_t process_id) = 0;
    virtual void reserved_2() = 0;
    virtual void disconnect() = 0;
    virtual void reserved_4() = 0;
    virtual void reserved_5() = 0;
    /// The scene of the connected renderer as an XML document.
    virtual const char* scene_xml() = 0;

protected:
    ~QueryApi() = default;
};

/// What `kInitialize` gives. The caller deletes it; what it has handed out goes with it.
class Root {
public:
    virtual ~Root() = default;
    /// Both can be null.
    virtual qorScene_api* get_scene_api(int min_version, int max_version) = 0;
    virtual QueryApi* get_query_api(int min_version, int max_version) = 0;
};

/// The one function that the library exports. It can give null.
using Initialize = Root*();
constexpr char kInitialize[] = "velmora_live_initialize";

}  // namespace live_library
