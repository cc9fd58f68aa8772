#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationstore.h"
#include "nameuses.h"
#include "survey/surveyfolder.h"
#include "templates/definetemplate.h"
#include "templates/modifytemplate.h"
#include "templates/templatestore.h"
#include "tests/survey/surveyfixture.h"
#include "workbench/newsurveydialog.h"
#include "workbench/renamewelldialog.h"
#include "workbench/welleditdialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

namespace campaign {

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

void type(const QWidget &dialog, const char *edit, const QString &typed)
{
    auto *line = dialog.findChild<QLineEdit *>(QString::fromLatin1(edit));
    if (!line)
        qFatal("no %s", edit);
    line->setText(typed);
}

// As a field gives it back, and as dialogs take it.
QString typedForm(const QString &name)
{
    return QLineEdit(name).text().trimmed();
}

// A dialog that refuses says so in a box or beside the field.
QString refusalUnless(bool isDone)
{
    return isDone ? QString() : text("refused");
}

QString typeTemplate(Place &place, const QString &name, int)
{
    DefineTemplate dialog(place.data, text("A"));
    type(dialog, "nameEdit", name);
    dialog.addTrackClicked();
    dialog.saveAsGlobalClicked();
    return refusalUnless(!dialog.isChanged());
}

int findTemplate(Place &place, const QString &name)
{
    return loadTemplate(place.data.project, TemplateId::global(typedForm(name))).size() == 1 ? 0 : -1;
}

QString typeWellTemplate(Place &place, const QString &name, int)
{
    DefineTemplate dialog(place.data, text("A"));
    type(dialog, "nameEdit", name);
    dialog.addTrackClicked();
    dialog.saveClicked();
    return refusalUnless(!dialog.isChanged());
}

int findWellTemplate(Place &place, const QString &name)
{
    return loadTemplate(place.data.project, TemplateId::ofWell(text("A"), typedForm(name))).size() == 1 ? 0 : -1;
}

// Of the two that a project has at first the one that is not called "Default", until it takes the place of that.
QString retypeTemplate(Place &place, const QString &name, int)
{
    QStringList names = place.data.project.globalTemplateNames;
    names.removeOne(text("Default"));
    ModifyTemplate dialog(place.data, TemplateId::global(names.value(0, text("Default"))), text("A"));
    type(dialog, "nameEdit", name);
    dialog.saveClicked();
    return refusalUnless(!dialog.isChanged());
}

int findRetypedTemplate(Place &place, const QString &name)
{
    return loadTemplate(place.data.project, TemplateId::global(typedForm(name))).isEmpty() ? -1 : 0;
}

QString typeCorrelation(Place &place, const QString &name, int)
{
    CorrelationPropertiesDialog dialog(place.data, text("New Correlation"));
    dialog.addWellClicked();
    type(dialog, "nameEdit", name);
    return refusalUnless(dialog.save());
}

int findCorrelation(Place &place, const QString &name)
{
    const auto never = [](auto &&...) { return false; };
    return correlation::load(place.data.project, typedForm(name), {never, never}) ? 0 : -1;
}

QString retypeCorrelation(Place &place, const QString &name, int)
{
    const QDir folder(correlation::correlationsFolder(place.data.project));
    const QStringList names = folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    CorrelationPropertiesDialog dialog(place.data, names.value(0, text("First")));
    if (names.isEmpty())
        dialog.addWellClicked();
    type(dialog, "nameEdit", name);
    return refusalUnless(dialog.save());
}

QString typeSurvey(Place &place, const QString &name, int)
{
    workbench::NewSurveyDialog dialog(place.asker, {}, place.file("surveys"));
    type(dialog, "nameEdit", name);
    dialog.accept();
    return refusalUnless(survey::isSurveyFolder(dialog.createdSurvey()));
}

int findSurveys(Place &, const QString &)
{
    return 0;
}

QString typeWell(Place &place, const QString &name, int)
{
    workbench::WellEditDialog dialog(place.wells(), place.asker);
    type(dialog, "nameEdit", name);
    type(dialog, "xEdit", text("500000"));
    type(dialog, "yEdit", text("6000000"));
    type(dialog, "kbEdit", text("10"));
    type(dialog, "totalDepthEdit", text("1000"));
    dialog.accept();
    return refusalUnless(dialog.hasWritten());
}

int findWell(Place &place, const QString &name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == typedForm(name))
            return place.wells().header(well.key).ok() ? 0 : -1;
    return -1;
}

QString retypeWell(Place &place, const QString &name, int)
{
    for (const host::WellEntry &well : place.wells().list().value) {
        if (well.key != QLatin1String(Place::firstWell))
            continue;
        workbench::RenameWellDialog dialog(place.wells(), place.asker, well);
        type(dialog, "nameEdit", name);
        dialog.accept();
        return refusalUnless(dialog.result() == QDialog::Accepted);
    }
    return text("no well");
}

QString editWell(Place &place, const QString &name, int)
{
    workbench::WellEditDialog dialog(place.wells(), place.asker, Place::secondWell, survey_fixture::properties("B"));
    type(dialog, "nameEdit", name);
    dialog.accept();
    return refusalUnless(dialog.result() == QDialog::Accepted);
}

} // namespace

std::vector<NameUse> typedNameUses()
{
    const QStringList wells{text("survey/WellInfo/")};
    const auto one = [](const QString &) { return text("A"); };
    return {
        {"typed template", {text("survey/WLC/Templates/Global/")}, typeTemplate, findTemplate, {}, typedForm},
        {"typed template of a well",
         {text("survey/WLC/Templates/A/")},
         typeWellTemplate,
         findWellTemplate,
         {},
         typedForm},
        {"typed new name of a template",
         {text("survey/WLC/Templates/Global/"), text("survey/WLC/.lorva-deleted/")},
         retypeTemplate,
         findRetypedTemplate,
         {},
         one},
        {"typed new name of a correlation",
         {text("survey/WLC/Correlations/"), text("survey/WLC/.lorva-deleted/")},
         retypeCorrelation,
         findCorrelation,
         {},
         one},
        {"typed correlation", {text("survey/WLC/Correlations/")}, typeCorrelation, findCorrelation, {}, typedForm},
        {"typed survey", {text("out/surveys/")}, typeSurvey, findSurveys, {}, one},
        {"typed well", wells, typeWell, findWell, {}, typedForm},
        {"typed name of a changed well", wells, editWell, findWell, {}, one},
        {"typed new name of a well", wells, retypeWell, findWell, {}, one},
    };
}

} // namespace campaign
