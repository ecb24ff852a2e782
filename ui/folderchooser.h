#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** What a folder is asked for: each has a last folder of its own. */
enum class FolderKind { Songs, Backup, Memory, Transfer };

/** Asks for a folder, in the one way that every dialog does; empty when the user cancels. */
QString chooseFolder(QWidget *parent, const QString &caption, FolderKind kind);

} // namespace tarvel4
