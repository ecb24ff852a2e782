#pragma once

#include <QString>

namespace tarvel4 {

/** What the window remembers for the user's convenience, in a file of its own beside the settings:
 * where it stood, and where its file dialogs ended. Losing it costs nothing. */
namespace StateFile {

QString path();

/** Empty where nothing was stored, or where the file is none of ours. */
QString value(const QString &key);
/** Where it can't be stored nothing is said. */
void setValue(const QString &key, const QString &value);

} // namespace StateFile

} // namespace tarvel4
