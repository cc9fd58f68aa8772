#pragma once

#include "programs/batch/arguments.h"
#include "programs/batch/result.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <limits>

/// The batch tool: what its commands are called and take is told once, in tables, from which the command line is read and
/// the help, the manual page and the shell's completion are made.
namespace batch {

class Session;

/// What a word of the command line stands for.
enum class WordKind {
    Text,
    Number,
    Count,
    Choice,
    File,
    Folder,
    // Names of what the survey or the given files hold: no rule checks them, but the shell offers them.
    Well,
    DrawnWell, ///< WELL or WELL:TEMPLATE
    Log, ///< of the given wells
    Marker, ///< of the given well
    PanelMarker, ///< of the wells of the given correlation
    Template, ///< of the well of --well, else one for all wells
    Correlation,
    DefaultLog, ///< GROUP=LOG of the given well
    Curve, ///< of the given LAS files
    CurveGroup, ///< CURVE=GROUP
    CurveName, ///< CURVE=NAME
};

/// What may be given for a word, checked before a command runs.
struct WordRule
{
    WordKind kind = WordKind::Text;
    QStringList choices = {}; ///< of WordKind::Choice; of others words that the shell offers beside the names
    double lowest = -std::numeric_limits<double>::infinity(); ///< of numbers and counts, as is highest
    double highest = std::numeric_limits<double>::infinity();
};

/// "--name VALUE" or, without a value, a switch.
struct Option
{
    QString name; ///< with its two dashes
    QString value; ///< what the value is called in texts; empty for a switch
    QString help; ///< one sentence without a full stop
    WordRule rule = {};
    bool isList = false; ///< the value is several names between commas
    bool isRepeatable = false; ///< else giving it twice is refused
    bool isRequired = false;
};

/// A word that stands by its place.
struct Operand
{
    QString name; ///< in capitals, as texts show it
    QString help;
    WordRule rule = {};
    bool isOptional = false; ///< only behind all that are not
    bool isRepeatable = false; ///< only the last one
};

struct Command
{
    QString name; ///< one word, or two ("report logs")
    QString summary; ///< one sentence without a full stop
    QString description; ///< paragraphs between empty lines
    QVector<Operand> operands;
    QVector<Option> options; ///< its own; options() has the common ones too
    QString example; ///< a line that runs on the demo survey, without the program's name
    ResultForm form;
    bool usesSurvey = true; ///< takes --survey, and needs one
    bool writes = false; ///< takes --dry-run
    bool replaces = false; ///< takes --force too
    bool usesCores = false; ///< takes --jobs
    bool drawsPictures = false; ///< needs fonts and a paint device, so a QApplication without a screen
    bool isHidden = false; ///< stands in no list: for the build and the shell
    /// What is wrong with the options together, as a sentence; empty when nothing is.
    std::function<QString(const Arguments &arguments)> problem;
    std::function<Result(Session &session, const Arguments &arguments)> run;
};

/// All options of the command in the order in which they are listed: its own, then the common ones.
QVector<Option> options(const Command &command);

/// Every command, in the order in which they are listed.
const QVector<Command> &commands();

} // namespace batch
