#pragma once

#include <cstdint>

/// Set on the root group, the layers' groups and their nodes' groups in a scene exported by layers.
inline constexpr std::uint32_t kLayersFlag = 1;

/// Set on the root group of every scene that is sent over a link.
inline constexpr std::uint32_t kLinkFlag = 0x8000;

/// Set on the root group of a Render, not of an Update.
inline constexpr std::uint32_t kWholeSceneFlag = 0x400;
