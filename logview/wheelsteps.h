#pragma once

namespace logview {

/// Whole steps of a mouse wheel, from the parts of steps that fine wheels and touch pads send.
class WheelSteps
{
public:
    /// \a angle is that of one event. Gives the steps that are complete with it, positive when turned away from the
    /// user. A turn in the other direction begins anew.
    int take(int angle)
    {
        if (angle == 0)
            return 0;
        if ((angle > 0) != (m_rest > 0))
            m_rest = 0;
        m_rest += angle;
        const int steps = m_rest / anglePerStep;
        m_rest %= anglePerStep;
        return steps;
    }

private:
    static constexpr int anglePerStep = 120; ///< eighths of a degree

    int m_rest = 0;
};

} // namespace logview
