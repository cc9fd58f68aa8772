#pragma once

#include "host/host.h"

#include <QObject>
#include <QStringList>

/// What every host must keep, whatever it is: one test class that each host's test program derives from, giving it
/// a host to work on. The private slots run for each of them.
class HostContract : public QObject
{
    Q_OBJECT

protected:
    /// Makes the host anew, with an empty survey. cleanup() calls destroyHost().
    virtual void makeHost() = 0;
    virtual void destroyHost() = 0;
    virtual host::Host &host() = 0;
    /// Adds a well in the host's own manner, with an empty marker set and no logs. Its track ends at totalDepth.
    virtual QString addWell(const host::WellHeader &header) = 0;
    /// Makes the host open another, empty survey.
    virtual void openOtherSurvey() = 0;
    /// The texts of the plug-ins' menu, top to bottom, and a user's click on one of them.
    virtual QStringList menuTexts() = 0;
    virtual void click(const QString &menuText) = 0;
    /// Makes the list of wells unreadable.
    virtual void damageList() = 0;
    /// Whether the survey keeps lengths in feet: then what crosses the interface in metres comes back as near as the
    /// survey's single precision has it.
    virtual bool isInFeet() const { return false; }
    /// Stores, behind the markers that the well has, one outside of its track, which the host does not give out.
    virtual void addHiddenMarker(const QString &wellName, const QString &markerName);
    virtual bool isMarkerStored(const QString &wellName, const QString &markerName);

    host::Wells &wells() { return host().wells(); }
    QString addNamed(const QString &name);
    QStringList listedNames();
    QStringList logNames(const QString &key);
    QStringList markerNames(const QString &key);
    /// The first length that is read is what the second one was written as.
    bool isSameLength(double read, double written) const;
    bool areSameDepths(const QVector<float> &read, const QVector<float> &written) const;
    QString markerPath(const QString &wellName);

private slots:
    void init();
    void cleanup();

    void foldersHaveNoSeparatorAtTheEnd();
    void surveyNameIsTheFolderName();
    void iconsComeByFileName();

    void anEmptySurveyListsNothing();
    void wellsAreSortedByName();
    void wellsOfOneNameHaveTheirOwnKeys();
    void namesOfAnyScriptComeBack();
    void aDamagedListIsAnError();

    void headerGivesWhatTheWellHas();
    void undefinedGroundElevationStaysUndefined();
    void aLogMayEndAtTheTotalDepth_data();
    void aLogMayEndAtTheTotalDepth();
    void unknownKeysAreErrors_data();
    void unknownKeysAreErrors();

    void aNewWellHasNoLogsAndNoMarkers();
    void writtenLogsComeBackInTheirOrder();
    void samplesComeBackToTheLastBit();
    void undefinedSamplesStayUndefined();
    void logsAreStoredByDepth_data();
    void logsAreStoredByDepth();
    void undefinedEndsAreLeftOut();
    void aLogOfTheSameNameIsReplacedInItsPlace();
    void logNamesAreComparedExactly();
    void aLogWithoutADefinedSampleIsRefused_data();
    void aLogWithoutADefinedSampleIsRefused();
    void aLogIndexOutsideTheListIsAnError();
    void aLogWrittenIsNobodyElsesLog();

    void markersComeSortedByDepth();
    void ofTwoMarkersWithOneNameTheFirstIsKept();
    void writingMarkersReplacesTheWholeSet();
    void markerColorsComeBack();
    void whatWasReadIsWrittenBackToTheLastBit();
    void hiddenMarkersAreKeptOrNamed();
    void writingMarkersIsAnnouncedOnce();
    void aListenerTakenOutIsToldNothing();
    void aListenerMayTakeOutTheNext();
    void reloadKeepsWhatIsStored();

    void aChangeOfSurveyIsAnnouncedAfterIt();
    void wellsOfTheOldSurveyAreGone();

    void actionsAreAppendedAndTriggered();
    void anActionIsTakenOutByItsId();
    void anActionMayTakeItselfOut();
};
