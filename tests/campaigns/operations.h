#pragma once

#include "place.h"

#include <functional>
#include <vector>

namespace campaign {

/// What a save came to, as the program that asked for it was told.
struct Saved
{
    bool isDone = false;
    QStringList said;
};

/// One kind of save: it takes a place from one of two states to the other.
struct Operation
{
    /// What of the two states is whole after a failure.
    enum class Unit {
        All, ///< all that it writes is old or new
        File, ///< each file is old or new
        Seen, ///< what a user sees is old or new
    };

    const char *name;
    /// Of what is said after a failure: it tells what could not be written. Null where silence is prescribed: then a
    /// save never says that it failed.
    const char *failureText;
    Unit unit = Unit::All;
    /// State 0 is made by the campaign itself, not by the product.
    bool isOneWay = false;
    std::function<Saved(Place &place, int state)> write;
    /// A kill comes within so many microseconds: some saves in turn.
    unsigned killWithinUs = 6000;
};

std::vector<Operation> surveyOperations();
std::vector<Operation> projectOperations();
/// What goes into the folders of the user.
std::vector<Operation> exportOperations();
/// Everything that the batch tool writes.
std::vector<Operation> batchOperations();

/// All of them; with a name that one.
std::vector<Operation> operations(const QByteArray &name = {});

/// Makes the place hold a state, and tells what was said of that and nothing else.
Saved save(const Operation &operation, Place &place, int state);

/// A log of some hundred samples, others in each state.
host::LogData logOfState(const char *name, int state);

inline Saved savedAs(const QString &error)
{
    return {error.isEmpty(), {error}};
}

/// A save that answers with boxes.
inline Saved savedWithBoxes(const Place &place, bool isDone)
{
    return {isDone, place.said()};
}

} // namespace campaign
