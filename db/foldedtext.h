#pragma once

#include <QString>
#include <QStringList>

namespace tarvel4 {

/** Texts as a search compares them: without regard to case, accents and the kind of apostrophe. */
namespace FoldedText {

QString of(const QString &text);

/** The words of what somebody searches for, folded, each once. */
QStringList wordsOf(const QString &text);

} // namespace FoldedText

} // namespace tarvel4
