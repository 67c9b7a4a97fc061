#pragma once

/// The number of the host's system units in a metre. Ignores the scale factor that the host reports
/// with the type of unit.
float GetUnitScale();
