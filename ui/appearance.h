#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QTranslator;
QT_END_NAMESPACE

namespace tarvel4 {

/** What the program looks like and speaks: shared by the start-up and the window's actions. */
namespace Appearance {

/** Loads the texts of a language ("it", "en", "de") and installs them over those in use. */
void installLanguage(QTranslator &translator, const QString &language);

/** Gives links a colour of the style sheet's palette, which a style sheet itself can't. */
void colourLinks();

/** Applies the style sheet of a file to the whole application; none where it can't be read. */
void applyStyleSheet(const QString &path);

} // namespace Appearance

} // namespace tarvel4
