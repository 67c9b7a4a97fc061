#pragma once

/// The host's system units in a metre. The scale that the host reports beside the unit's type plays
/// no part.
float GetUnitScale();
