#pragma once

namespace logview {

/// The paper scale that lies \a steps on in 1:100, 1:200, 1:500, 1:1000, 1:2000, 1:5000, 1:10000, seen from 1:\a scale:
/// coarser ones for positive, finer ones for negative steps. At an end of the list, or beyond it, a step that leads
/// further away changes nothing.
float steppedScale(float scale, int steps);

} // namespace logview
