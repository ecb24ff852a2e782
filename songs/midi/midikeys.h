#pragma once

#include <QString>
#include <QStringList>

namespace tarvel4 {

/** The key names and the codes that a key signature stores; docs/formats.md, Key table. */
namespace MidiKeys {

/** The name of a code (sharps or flats in the high byte, 1 for minor in the low one); empty when
 * it is not in the table. */
QString nameOf(quint16 code);

/** The code of a name or an alias, blanks ignored; -1 when there is none. */
int codeOf(const QString &name);

/** The 30 names, in the order of their codes. */
QStringList names();

} // namespace MidiKeys

} // namespace tarvel4
