#pragma once

#include <cstdint>

class qorScene_api;

/// The interfaces of the renderer's live library. The library is closed-source and built
/// separately, so both sides must declare the virtual functions in the same order.
namespace live_library {

/// Finds running renderers and inspects them. Returned texts belong to the library, can be null,
/// and are valid until the next call.
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

/// The object that the function named `kInitialize` returns. The caller deletes it; everything
/// obtained from it becomes invalid with it.
class Root {
public:
    virtual ~Root() = default;
    /// Both functions can return null.
    virtual qorScene_api* get_scene_api(int min_version, int max_version) = 0;
    virtual QueryApi* get_query_api(int min_version, int max_version) = 0;
};

/// The only function that the library exports. It can return null.
using Initialize = Root*();
constexpr char kInitialize[] = "velmora_live_initialize";

}  // namespace live_library
