#pragma once

#include "tests/ui/dialogdriver.h"
#include "tests/ui/diskcheckprogram.h"
#include "ui/indexdialog.h"

#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>

namespace tarvel4 {

/** The index dialog, a memory of two songs, and a folder "E:" beside it that has a drive's name. */
class IndexDialogFixture
{
protected:
    static constexpr int pastAnyTest = 20000; // milliseconds

    void setUp()
    {
        QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft")).clear();
        m_program.reset(new DiskCheckProgram);
        addSong(card() + QStringLiteral("/a.mid"));
        addSong(card() + QStringLiteral("/pop/b.mp3"));
        m_dialog.reset(new IndexDialog(nullptr, {pastAnyTest, pastAnyTest}));
        m_dialog->show();
    }
    void tearDown()
    {
        m_dialog.reset();
        m_program.reset();
    }

    template <class Widget> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    QString report() const { return child<QPlainTextEdit>("reportPlainTextEdit")->toPlainText(); }
    bool canBeUsed() const
    {
        return child<QPushButton>("startPushButton")->isEnabled()
            && child<QPushButton>("closePushButton")->isEnabled()
            && child<QPushButton>("browsePushButton")->isEnabled()
            && child<QLineEdit>("pathLineEdit")->isEnabled();
    }
    void choose(const QString &path, bool rebuild, bool check = false)
    {
        child<QLineEdit>("pathLineEdit")->setText(path);
        click(rebuild ? "rebuildRadioButton" : "updateRadioButton");
        if (check)
            click("checkDiskCheckBox");
    }
    void click(const char *name) const
    {
        auto *button = child<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }
    /** Presses "Inizia", answers the boxes that come, and gives their texts. */
    QStringList run(int boxes = 1)
    {
        DialogDriver driver;
        for (int i = 0; i < boxes; ++i)
            driver.answerBox(QMessageBox::Ok);
        click("startPushButton");
        if (!driver.problems().isEmpty())
            driver.boxes.append(driver.problems());
        m_lastIcon = driver.lastBox.icon;
        return driver.boxes;
    }
    static QStringList done()
    {
        return {QStringLiteral("Ottimizza memoria|Operazione completata con successo")};
    }
    static QStringList failed()
    {
        return {QStringLiteral("Ottimizza memoria|Operazione non riuscita.\nAssicurarsi che il "
                               "disco abbia sufficiente "
                               "spazio libero e che non sia protetto da scrittura.")};
    }
    static QStringList withErrors()
    {
        return {QStringLiteral("Ottimizza memoria|Durante l'operazione si sono verificati alcuni "
                               "errori.\nConsultare il "
                               "report per maggiori informazioni.")};
    }
    static QString plainReport()
    {
        return QStringLiteral("Ottimizzazione memoria in corso...\nOperazione completata");
    }
    QString card() const { return m_program->path(QStringLiteral("card")); }
    static void addSong(const QString &path)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no more than a name");
    }
    static bool isPrepared(const QString &root)
    {
        for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3",
                                 "atitle.id3", "aartist.id3", "fsinfos.id3"}) {
            if (!QFileInfo(root + QLatin1Char('/') + QLatin1String(name)).isFile())
                return false;
        }
        return true;
    }
    static QString mediaRoot()
    {
        return QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"))
            .value(QStringLiteral("mediaroot"))
            .toString();
    }

    QScopedPointer<DiskCheckProgram> m_program;
    QScopedPointer<IndexDialog> m_dialog;
    QMessageBox::Icon m_lastIcon = QMessageBox::NoIcon;
};

} // namespace tarvel4
