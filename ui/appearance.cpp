#include "ui/appearance.h"

#include <QApplication>
#include <QFile>
#include <QToolTip>
#include <QTranslator>
#include <QWidget>

namespace tarvel4 {

void Appearance::installLanguage(QTranslator &translator, const QString &language)
{
    // required: German speaks English
    const QString file = language == QLatin1String("it") ? QStringLiteral(":/trans/tarvel4soft_it")
                                                         : QStringLiteral(":/trans/tarvel4soft_en");
    QCoreApplication::removeTranslator(&translator);
    // a failed load leaves the Italian source texts
    static_cast<void>(translator.load(file));
    QCoreApplication::installTranslator(&translator);
}

void Appearance::setScheme(Colours::Scheme scheme)
{
    const QPalette palette = Colours::palette(scheme);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette); // tool tips have one of their own
}

void Appearance::followDesktop()
{
    setScheme(Colours::schemeOf(QApplication::palette()));
}

Colours::Scheme Appearance::scheme()
{
    return Colours::schemeOf(QApplication::palette());
}

void Appearance::adaptPictures(const QList<QWidget *> &labels)
{
    const QLatin1String light(".png");
    const QLatin1String dark("-dark.png");
    for (QWidget *label : labels) {
        QString style = label->styleSheet().replace(dark, light);
        if (scheme() == Colours::Scheme::Dark)
            style.replace(light, dark);
        if (style != label->styleSheet())
            label->setStyleSheet(style);
    }
}

void Appearance::applyStyleSheet(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        // required: the text ends at the first zero byte
        qApp->setStyleSheet(QString::fromLatin1(
            bytes.left(static_cast<int>(qstrnlen(bytes, static_cast<uint>(bytes.size()))))));
    }
}

} // namespace tarvel4
