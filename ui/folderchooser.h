#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** Asks for a folder, in the one way that every dialog does; empty when the user cancels. */
QString chooseFolder(QWidget *parent, const QString &caption);

} // namespace tarvel4
