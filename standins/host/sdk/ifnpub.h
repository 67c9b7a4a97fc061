#pragma once

/// The root of the interfaces that the host also publishes to its scripts.
class FPInterface {
public:
    FPInterface() = default;
    FPInterface(const FPInterface&) = delete;
    FPInterface& operator=(const FPInterface&) = delete;
    virtual ~FPInterface() = default;
};
