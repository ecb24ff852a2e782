#pragma once

#include "ui/colours.h"

#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QTranslator;
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** What the program looks like and speaks: shared by the start-up and the window's actions. */
namespace Appearance {

/** Loads the texts of a language ("it", "en", "de") and installs them over those in use. */
void installLanguage(QTranslator &translator, const QString &language);

/** Colours the application in a scheme. The style sheet takes its colours from there. */
void setScheme(Colours::Scheme scheme);

/** Colours the application light or dark, as the desktop is. */
void followDesktop();

/** The scheme that the application is coloured in. */
Colours::Scheme scheme();

/** Shows the scheme's form of the pictures in labels that name them in their own style sheets. */
void adaptPictures(const QList<QWidget *> &labels);

/** Applies the style sheet of a file to the whole application; none where it can't be read. */
void applyStyleSheet(const QString &path);

} // namespace Appearance

} // namespace tarvel4
