#pragma once

#include "base/leftovers.h"
#include "base/madefolders.h"
#include "host/hostrecords.h"

#include <QString>

#include <optional>

namespace survey {

/// Deletes what is left in a folder of surveys of new ones whose program died before they were put in place.
void removeUnfinishedSurveys(const QString &root);

/// The place of a new survey, which is built in a hidden folder beside it and appears there whole or not at all. What
/// was not put in place leaves nothing behind, nor any folder made on the way; what a program that died left goes.
class SurveyPlace
{
public:
    /// Makes the folders that lead to \a path. Anything there but an empty folder is an error.
    explicit SurveyPlace(const QString &path);

    /// Why nothing can be built, as a sentence; empty when it can.
    QString error() const { return m_error; }
    /// The path at which the survey is to be made; its folder does not exist yet.
    QString buildFolder() const;
    /// Moves the survey in its place. A data root that is new or was empty gets its mark, so that the host accepts
    /// it.
    host::Status putInPlace();

private:
    QString m_target;
    QString m_root;
    bool m_isNewRoot;
    base::MadeFolders m_made;
    std::optional<base::HiddenFolder> m_beside; // gone before the folders above it
    QString m_error;
};

} // namespace survey
