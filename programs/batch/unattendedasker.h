#pragma once

#include "base/asker.h"

#include <QStringList>

namespace batch {

/// Nobody is there to be asked: what a window would ask is answered "No" and named, or "Yes" where --force was given. What
/// boxes would tell is kept for who wants to tell it.
class UnattendedAsker : public base::Asker
{
public:
    explicit UnattendedAsker(bool isForced)
        : m_isForced(isForced)
    {
    }

    base::BoxButton show(const base::Box &box) override;

    /// The questions that were answered "No", as sentences that name the option; forgotten then.
    QStringList takeRefusals();
    /// The texts of warning boxes; forgotten then.
    QStringList takeWarnings();

private:
    bool m_isForced = false;
    QStringList m_refusals;
    QStringList m_warnings;
};

} // namespace batch
