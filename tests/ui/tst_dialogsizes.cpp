#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"
#include "ui/songslistdialog.h"

#include <QLabel>
#include <QPushButton>
#include <QTranslator>
#include <QtTest>

using namespace tarvel4;

namespace {

const QSize room(640, 372); // 1280x800 at 200 %, below a window's title

using Make = std::function<QDialog *()>;

template <class Dialog> Make make()
{
    return [] { return new Dialog; };
}

QDialog *makeProgress()
{
    return new ProgressDialog({QDialog::tr("x"), QDialog::tr("x"), QStringLiteral("Interrompi")},
                              10, nullptr);
}

} // namespace

Q_DECLARE_METATYPE(Make)

/** No dialog is larger than a small screen, and none cuts a text, in either language. */
class tst_DialogSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss")); }
    void dialogs_data();
    void dialogs();
};

void tst_DialogSizes::dialogs_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("language");
    for (const char *language : {"it", "en"}) {
        const auto row = [language](const char *name, const Make &dialog) {
            QTest::newRow(
                qPrintable(QLatin1String(name) + QLatin1Char(' ') + QLatin1String(language)))
                << dialog << QString::fromLatin1(language);
        };
        row("about", make<AboutDialog>());
        row("backup", make<BackupDialog>());
        row("edit", make<DataEditDialog>());
        row("help", make<HelpDialog>());
        row("index", make<IndexDialog>());
        row("question", make<NoCopyrightDialog>());
        row("progress", makeProgress);
        row("song list", make<SongsListDialog>());
        row("summary", make<ProceedDialog>());
    }
}

void tst_DialogSizes::dialogs()
{
    QFETCH(Make, make);
    QFETCH(QString, language);
    QTranslator translator;
    Appearance::installLanguage(translator, language);
    const std::unique_ptr<QDialog> dialog(make());
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    dialog->resize(dialog->size().boundedTo(room));
    QCoreApplication::processEvents();
    QVERIFY2(dialog->height() <= room.height(), qPrintable(QString::number(dialog->height())));
    QVERIFY2(dialog->width() <= room.width(), qPrintable(QString::number(dialog->width())));

    for (const QPushButton *button : dialog->findChildren<QPushButton *>())
        QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
    for (const QLabel *label : dialog->findChildren<QLabel *>()) {
        if (label->isVisible() && label->wordWrap())
            QVERIFY2(label->height() >= label->heightForWidth(label->width()),
                     qPrintable(label->text()));
    }
}

QTEST_MAIN(tst_DialogSizes)
#include "tst_dialogsizes.moc"
