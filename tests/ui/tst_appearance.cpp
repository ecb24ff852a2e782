#include "tests/library/logcapture.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QtTest>

using namespace tarvel4;

// A resource is withdrawn and restored by functions outside any namespace.
static void withdrawTranslations()
{
    Q_CLEANUP_RESOURCE(translations);
}

static void restoreTranslations()
{
    Q_INIT_RESOURCE(translations);
}

Q_DECLARE_METATYPE(Colours::Scheme)

class tst_Appearance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void languages()
    {
        QTranslator translator;
        const auto wordIn = [&translator](const char *language) {
            Appearance::installLanguage(translator, text(language));
            return QCoreApplication::translate("tarvel4::MainWindow", "Aiuto")
                .remove(QLatin1Char('&'));
        };
        for (const char *english : {"en", "de", "fr"}) {
            QCOMPARE(wordIn(english), text("Help"));
            QCOMPARE(wordIn("it"), text("Aiuto"));
        }
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), text("Annulla"));
    }

    void aMissingTranslationIsIgnoredAndLeavesTheItalianTexts()
    {
        const LogCapture log;
        withdrawTranslations();
        const auto restored = qScopeGuard(restoreTranslations);
        for (const char *language : {"it", "en", "de"}) {
            QTranslator translator;
            Appearance::installLanguage(translator, text(language));
            QVERIFY2(translator.isEmpty(), language);
            QCOMPARE(QCoreApplication::translate("tarvel4::MainWindow", "Aiuto"), text("Aiuto"));
        }
        QCOMPARE(LogCapture::lines(), QStringList());
    }

    void aMissingStyleSheetIsIgnoredAndChangesNothing()
    {
        const QString before = text("QLabel{}");
        qApp->setStyleSheet(before);
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        const LogCapture log;
        Appearance::applyStyleSheet(text(":/style/missing.qss"));
        QCOMPARE(qApp->styleSheet(), before);
        QCOMPARE(LogCapture::lines(), QStringList());
    }

    void styleSheets_data()
    {
        const Table<QByteArray, QString> row;
        row("up to the first zero byte", QByteArray("QLabel{}\0rubbish", 16), "QLabel{}");
        row("as Latin-1", QByteArray("/*\xe8*/"), text("/*") + QChar(0xe8) + text("*/"));
        row("an empty file", QByteArray(), QString());
    }
    void styleSheets()
    {
        const auto [bytes, style] = cells<QByteArray, QString>();
        QTemporaryFile file;
        QVERIFY(file.open());
        QCOMPARE(file.write(bytes), static_cast<qint64>(bytes.size()));
        file.close();
        qApp->setStyleSheet(QString());

        Appearance::applyStyleSheet(file.fileName());
        QCOMPARE(qApp->styleSheet(), style);
    }

    /** A button is measured in its plain state: a wider font in another one would cut its text. */
    void buttonsKeepTheirFontInEveryState()
    {
        QFile file(text(":/style/default.qss"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString style = QString::fromLatin1(file.readAll());
        QVERIFY(style.contains(text("QPushButton:default {")));
        const QRegularExpression fontOfAState(text("QPushButton:[^{}]*\\{[^}]*font"));
        const QRegularExpressionMatch found = fontOfAState.match(style);
        QVERIFY2(!found.hasMatch(), qPrintable(found.captured()));
    }

    void linksHaveTheColourOfTheScheme_data()
    {
        const Table<Colours::Scheme, QString> row;
        row("light", Colours::Scheme::Light, "#0b7285");
        row("dark", Colours::Scheme::Dark, "#6fd3e3");
    }
    void linksHaveTheColourOfTheScheme()
    {
        const auto [scheme, colour] = cells<Colours::Scheme, QString>();
        const QPalette before = QApplication::palette();
        Appearance::setScheme(scheme);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        QLabel label(text("<a href=\"x\">link</a>"));
        QCOMPARE(label.palette().color(QPalette::Link), QColor(colour));
        QTextDocument page;
        page.setHtml(label.text());
        QCOMPARE(page.begin().begin().fragment().charFormat().foreground().color(), QColor(colour));
        qApp->setStyleSheet(QString());
        QApplication::setPalette(before);
    }

    void whatHintsAtWhatToTypeIsNoText()
    {
        const QPalette before = QApplication::palette();
        Appearance::setScheme(Colours::Scheme::Light);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        QLineEdit field;
        field.ensurePolished();
        QCOMPARE(field.palette().color(QPalette::PlaceholderText),
                 field.palette().color(QPalette::Dark));
        QVERIFY(field.palette().color(QPalette::Text) != field.palette().color(QPalette::Dark));
        qApp->setStyleSheet(QString());
        QApplication::setPalette(before);
    }

    /** Else boxes have those of Qt, in which each pixel is seen on a screen with small ones. */
    void messageBoxesHavePicturesOfOurs()
    {
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        for (const auto icon : {QMessageBox::Information, QMessageBox::Question,
                                QMessageBox::Warning, QMessageBox::Critical}) {
            QMessageBox box(icon, QString(), text("x"));
            box.ensurePolished();
            const QImage shown = box.iconPixmap().toImage();
            QCOMPARE(shown.width(), 48);
            QCOMPARE(shown.pixelColor(0, 0).alpha(), 0);
            QVERIFY(shown.pixelColor(24, 26) == QColor(Qt::white) || icon == QMessageBox::Question);
        }
        qApp->setStyleSheet(QString());
    }

    /** A colour of the sheet's own would be right in one of the schemes only. */
    void styleSheetTakesItsColoursFromThePalette()
    {
        QFile file(text(":/style/default.qss"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString style = QString::fromLatin1(file.readAll());
        QVERIFY(style.count(text("palette(")) > 50);
        const QRegularExpression colour(
            text("#[0-9a-f]{3,8}\\b|rgba?\\(|: *(white|black|gr[ae]y|red)\\b"));
        const QRegularExpressionMatch found = colour.match(style);
        QVERIFY2(!found.hasMatch(), qPrintable(found.captured()));
    }

    void picturesOfTheScheme_data()
    {
        const Table<Colours::Scheme, QString> row;
        row("light", Colours::Scheme::Light, "image: url(:/imgs/logo-kvaro.png);");
        row("dark", Colours::Scheme::Dark, "image: url(:/imgs/logo-kvaro-dark.png);");
    }
    void picturesOfTheScheme()
    {
        const auto [scheme, style] = cells<Colours::Scheme, QString>();
        const QPalette before = QApplication::palette();
        Appearance::setScheme(scheme);
        QLabel label;
        label.setStyleSheet(text("image: url(:/imgs/logo-kvaro.png);"));
        Appearance::adaptPictures({&label});
        Appearance::adaptPictures({&label}); // once more changes nothing
        QApplication::setPalette(before);
        QCOMPARE(label.styleSheet(), style);
        for (const char *picture : {"logo-kvaro", "logo-tarvel4", "image-corner"})
            QVERIFY(QFile::exists(text(":/imgs/%1-dark.png").arg(text(picture))));
    }
};

QTEST_MAIN(tst_Appearance)
#include "tst_appearance.moc"
