#pragma once

class qorScene_api;

namespace qor {

class qorSceneapi_oo;

/// The place where a scene goes: a file, or a running renderer. It owns that place and hands out
/// the scene API object for it. Only the factory knows which of the two it is.
class LightFactory {
public:
    virtual ~LightFactory() = default;

    /// Borrowed from the factory, or null if there is no scene to be had.
    virtual qorScene_api* get_api() = 0;

    /// Writes what comes first in the stream, before anything else.
    virtual void write_header(qorSceneapi_oo& scene) = 0;

    /// Ends the output. The wrapper on this factory must be gone by then. Throws
    /// `std::runtime_error` if what was written may not be whole.
    virtual void close() = 0;
};

}  // namespace qor
