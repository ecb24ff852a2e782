#pragma once

#include <QStringList>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** Asks for song files, as many as there are; empty when the user cancels. */
QStringList chooseSongs(QWidget *parent, const QString &caption);

} // namespace tarvel4
