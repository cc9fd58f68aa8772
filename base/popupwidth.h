#pragma once

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

namespace base {

/// Makes the list that a chooser opens as wide as its longest entry, where the chooser is narrower: names that differ in their
/// middle are told apart only whole.
void fitPopup(QComboBox &chooser);

} // namespace base
