#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QVariant;
QT_END_NAMESPACE

namespace tarvel4 {

/** The fields of a song's record, by their keys ("title", "markers" ...), as people read them. */
namespace FieldTexts {

/** What a field is called, translated. */
QString nameOf(const QString &field);

/** A field's value on one line: minutes and seconds, markers as "1 Intro, 5 Verse"; empty for what
 * a song does not have. */
QString valueOf(const QString &field, const QVariant &value);

} // namespace FieldTexts

} // namespace tarvel4
