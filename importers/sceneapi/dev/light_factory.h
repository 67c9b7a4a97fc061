#pragma once

class qorScene_api;

namespace qor {

class qorSceneapi_oo;

/// The destination of a scene: a file or a running renderer. The factory owns the destination and
/// provides its scene API object. Only the factory knows which kind of destination it is.
class LightFactory {
public:
    virtual ~LightFactory() = default;

    /// Belongs to the factory. Null if the destination isn't available.
    virtual qorScene_api* get_api() = 0;

    /// Writes the beginning of the stream, before anything else.
    virtual void write_header(qorSceneapi_oo& scene) = 0;

    /// Ends the output. Destroy the wrapper of this factory first. Throws `std::runtime_error` if
    /// the output may be incomplete.
    virtual void close() = 0;
};

}  // namespace qor
