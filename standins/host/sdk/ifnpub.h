#pragma once

/// The base class of the interfaces that the host also makes available to scripts.
class FPInterface {
public:
    FPInterface() = default;
    FPInterface(const FPInterface&) = delete;
    FPInterface& operator=(const FPInterface&) = delete;
    virtual ~FPInterface() = default;
};
