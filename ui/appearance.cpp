#include "ui/appearance.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QTranslator>

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

void Appearance::colourLinks()
{
    const QColor teal(0x0b, 0x72, 0x85);
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Link, teal);
    palette.setColor(QPalette::LinkVisited, teal);
    QApplication::setPalette(palette);
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
