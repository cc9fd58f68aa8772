#pragma once

#include <QStyledItemDelegate>

/// Shows cells whose text may be very long (a mnemonic, say) in a readable length; editing sees the whole text.
class ShortTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
};
