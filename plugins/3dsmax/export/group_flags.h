#pragma once

#include <cstdint>

/// Of the root group, the groups of the layers and those of their nodes, in a scene by layers.
inline constexpr std::uint32_t kLayersFlag = 1;

/// Of the root group of every scene that goes over a link.
inline constexpr std::uint32_t kLinkFlag = 0x8000;

/// The same, but not of an update.
inline constexpr std::uint32_t kWholeSceneFlag = 0x400;
