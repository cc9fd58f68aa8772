#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QMainWindow;
QT_END_NAMESPACE

/// Gives the window the size, and its docks and tool bars the places, that the user left; the first time a size that
/// leaves something of the screen, for when it is not maximized. Call it when all docks are there.
void restoreLooks(QMainWindow &window);
void keepLooks(const QMainWindow &window);
