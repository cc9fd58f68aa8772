#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace base {

enum class BoxIcon { Information, Warning, Question };
enum class BoxButton { Ok, Yes, No, Cancel };

/// A modal box: what it shows, in the order in which it shows it.
struct Box
{
    BoxIcon icon = BoxIcon::Information;
    QString title;
    QString text;
    QVector<BoxButton> buttons; ///< the first one is the default
    /// Of the button Ok; empty for the platform's own text ("OK", or its translation). The others are never translated.
    QString okText = {};
    /// The button that Enter presses; the first one when unset.
    std::optional<BoxButton> defaultButton = {};
};

/// The one door through which computing code asks and tells the user: message boxes in the product, a script in
/// tests.
class Asker
{
public:
    virtual ~Asker() = default;

    /// Shows the box and waits. A box closed without a button gives Cancel where it has one, else No, else Ok.
    virtual BoxButton show(const Box &box) = 0;

    void inform(const QString &title, const QString &text)
    {
        show({BoxIcon::Information, title, text, {BoxButton::Ok}});
    }
    void warn(const QString &title, const QString &text) { show({BoxIcon::Warning, title, text, {BoxButton::Ok}}); }
    /// True only for "Yes". What loses something asks with confirmLoss(), where "No" is the default button.
    bool confirm(const QString &title, const QString &text)
    {
        return show({BoxIcon::Question, title, text, {BoxButton::Yes, BoxButton::No}}) == BoxButton::Yes;
    }
    bool confirmLoss(const QString &title, const QString &text)
    {
        return show({BoxIcon::Question, title, text, {BoxButton::No, BoxButton::Yes}}) == BoxButton::Yes;
    }
};

} // namespace base
