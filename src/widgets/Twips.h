#pragma once

/// Lengths of some layouts are stated in twips.
inline constexpr int TwipsPerPixel = 15;
