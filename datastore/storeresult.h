#pragma once

/// What became of storing something that may ask the user first. True where it was stored.
class StoreResult
{
public:
    enum State {
        Stored,
        Declined, ///< the user said "No": everything is as it was
        Failed ///< and was told why
    };

    StoreResult(State state)
        : m_state(state)
    {
    }
    operator bool() const { return m_state == Stored; }
    bool isDeclined() const { return m_state == Declined; }

private:
    State m_state;
};
