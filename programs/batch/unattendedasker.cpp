#include "programs/batch/unattendedasker.h"

#include <utility>

namespace batch {

base::BoxButton UnattendedAsker::show(const base::Box &box)
{
    if (box.buttons.contains(base::BoxButton::Yes)) {
        if (m_isForced)
            return base::BoxButton::Yes;
        m_refusals.append(box.text + QStringLiteral("\nNobody is asked here: with --force the answer is \"Yes\"."));
        return base::BoxButton::No;
    }
    if (box.icon == base::BoxIcon::Warning)
        m_warnings.append(box.text);
    return base::BoxButton::Ok;
}

QStringList UnattendedAsker::takeRefusals()
{
    return std::exchange(m_refusals, {});
}

QStringList UnattendedAsker::takeWarnings()
{
    return std::exchange(m_warnings, {});
}

} // namespace batch
