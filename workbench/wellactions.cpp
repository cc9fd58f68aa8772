#include "workbench/wellactions.h"

#include "base/asker.h"
#include "workbench/renamewelldialog.h"
#include "workbench/welleditdialog.h"

namespace workbench {

host::WellEntry storedWell(survey::SurveyStore &store, const QString &key)
{
    for (const host::WellEntry &entry : store.list().value)
        if (entry.key == key)
            return entry;
    return {};
}

bool editWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well, QWidget *parent)
{
    const host::Outcome<survey::WellProperties> properties = store.properties(well.key);
    if (!properties.ok()) {
        asker.warn(QStringLiteral("Edit well"), properties.error);
        return false;
    }
    WellEditDialog dialog(store, asker, well.key, properties.value, parent);
    dialog.exec();
    return dialog.hasWritten();
}

bool renameWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well, QWidget *parent)
{
    return RenameWellDialog(store, asker, well, parent).exec() == QDialog::Accepted;
}

bool deleteWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well)
{
    const QString title = QStringLiteral("Delete well");
    if (!asker.confirmLoss(title,
                           QStringLiteral("Delete the well \"%1\"?\nIts logs and markers are deleted too. "
                                          "This cannot be undone.")
                               .arg(well.name)))
        return false;
    const host::Status status = store.removeWell(well.key);
    if (!status.ok())
        asker.warn(title, status.error);
    return true; // even a failed deletion may have taken a part
}

} // namespace workbench
