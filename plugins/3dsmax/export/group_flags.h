#pragma once

#include <cstdint>

/// Set on the root group, the groups of the layers and the groups of their nodes in a scene by
/// layers.
inline constexpr std::uint32_t kLayersFlag = 1;

/// Set on the root group of every scene that goes over a link.
inline constexpr std::uint32_t kLinkFlag = 0x8000;

/// Set on the root group of a Render, not of an Update.
inline constexpr std::uint32_t kWholeSceneFlag = 0x400;
