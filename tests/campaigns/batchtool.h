#pragma once

#include "programs/batch/result.h"

#include <QByteArrayList>

#include <optional>

namespace campaign {

/// What a command came to that was run in this process.
struct BatchOutcome
{
    QString refusal; ///< of the command line
    QStringList failures;
    QVector<batch::Record> records;

    bool isDone() const { return refusal.isEmpty() && failures.isEmpty(); }
};

/// Runs a command with the options it has for replacing and for the survey; \a operands are words whatever they begin with.
BatchOutcome runBatchHere(const QString &survey, const QStringList &options, const QStringList &operands = {});

/// Runs the built batch tool; what it says on its standard error where it fails, nothing where all is done. It is a
/// program of its own: of the faults of a disk only limits of this program hold for it.
std::optional<QByteArray> batchToolFailure(const QByteArrayList &arguments);

} // namespace campaign
