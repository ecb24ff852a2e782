#include "tests/ui/dataeditfixture.h"

#include <QCheckBox>
#include <QRadioButton>

using namespace tarvel4;

using namespace DataEditFixture;

using Flag = bool (DataEditDialog::*)() const;
Q_DECLARE_METATYPE(Flag)

/** The choices of the editor: where the title comes from, and which fields every song gets. */
class tst_DataEditChoices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void titleSources_data();
    void titleSources();
    void titleSourceAndItsBox();
    void titleFlagOutlivesItsBox();
    void disabledTitleBoxSetsTheFlagFalse();
    void applyToAll_data();
    void applyToAll();
    void applyToAllIsTakenBack_data();
    void applyToAllIsTakenBack();
    void nextSongStartsAfresh();

private:
    /** Ticks or unticks a box and answers the question that comes. */
    static QString clickAndAnswer(const QDialog &dialog, const QString &box,
                                  QMessageBox::StandardButton answer)
    {
        DialogDriver driver;
        driver.answerBox(answer);
        click(dialog, box.toLatin1().constData());
        if (!driver.problems().isEmpty())
            return driver.problems();
        return driver.boxes.join(QLatin1Char('\n'));
    }
};

void tst_DataEditChoices::titleSources_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::newRow("the name without its extension")
        << QStringLiteral("/music/azzurro.mid") << QStringLiteral("azzurro");
    QTest::newRow("only the last point ends the name")
        << QStringLiteral("/music/a.b.c.mid") << QStringLiteral("a.b.c");
    QTest::newRow("a path with no point gives the whole name")
        << QStringLiteral("/music/azzurro") << QStringLiteral("azzurro");
    QTest::newRow("a point only in a folder name gives the whole name")
        << QStringLiteral("/mu.sic/azzurro") << QStringLiteral("azzurro");
    QTest::newRow("a path without a folder")
        << QStringLiteral("azzurro.mid") << QStringLiteral("azzurro");
    QTest::newRow("an empty path") << QString(QLatin1String("")) << QString(QLatin1String(""));
}

void tst_DataEditChoices::titleSources()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    DataEditDialog dialog;
    SongInfo info = song();
    info.filename = path;
    fill(dialog, info);
    click(dialog, "radioButtonTitle2");
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), title);
    click(dialog, "radioButtonTitle1");
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), QStringLiteral("Azzurro"));
}

void tst_DataEditChoices::titleSourceAndItsBox()
{
    DataEditDialog dialog;
    fill(dialog, song());
    auto *box = child<QCheckBox>(dialog, QStringLiteral("checkBoxToAllTitle"));
    QVERIFY(!box->isEnabled());
    click(dialog, "radioButtonTitle2");
    QVERIFY(box->isEnabled());
    QVERIFY(!box->isChecked());
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    QVERIFY(box->isChecked());
    click(dialog, "radioButtonTitle1");
    QVERIFY(!box->isEnabled());
    QVERIFY(!box->isChecked());
}

void tst_DataEditChoices::titleFlagOutlivesItsBox()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    QVERIFY(dialog.applyToAllTitle());
    click(dialog, "radioButtonTitle1");
    QVERIFY(dialog.applyToAllTitle()); // required
}

void tst_DataEditChoices::disabledTitleBoxSetsTheFlagFalse()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    click(dialog, "radioButtonTitle1");
    QVERIFY(QMetaObject::invokeMethod(&dialog, "on_checkBoxToAllTitle_clicked"));
    QVERIFY(!dialog.applyToAllTitle());
}

void tst_DataEditChoices::applyToAll_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<Flag>("flag");
    QTest::addColumn<QString>("question");
    QTest::newRow("author")
        << QStringLiteral("checkBoxToAllAuthor") << &DataEditDialog::applyToAllAuthor
        << QStringLiteral(
               "L'autore inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("artist")
        << QStringLiteral("checkBoxToAllArtist") << &DataEditDialog::applyToAllArtist
        << QStringLiteral(
               "L'interprete inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("genre")
        << QStringLiteral("checkBoxToAllGenre") << &DataEditDialog::applyToAllGenre
        << QStringLiteral(
               "Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("title")
        << QStringLiteral("checkBoxToAllTitle") << &DataEditDialog::applyToAllTitle
        << QStringLiteral("Il titolo di tutte le song della lista verrà sovrascritto non il nome "
                          "del file, sei sicuro?");
}

void tst_DataEditChoices::applyToAll()
{
    QFETCH(QString, box);
    QFETCH(Flag, flag);
    QFETCH(QString, question);
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    auto *checkBox = child<QCheckBox>(dialog, box);

    DialogDriver driver;
    driver.answerBox(QMessageBox::Yes);
    click(dialog, box.toLatin1().constData());
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, QStringList(QStringLiteral("ATTENZIONE|") + question));
    QCOMPARE(driver.lastBox.icon, QMessageBox::Question);
    QCOMPARE(driver.lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
    QVERIFY(checkBox->isChecked());
    QVERIFY((dialog.*flag)());
    int set = 0;
    for (const Flag each : {&DataEditDialog::applyToAllAuthor, &DataEditDialog::applyToAllArtist,
                            &DataEditDialog::applyToAllGenre, &DataEditDialog::applyToAllTitle})
        set += (dialog.*each)() ? 1 : 0;
    QCOMPARE(set, 1);

    click(dialog, box.toLatin1().constData()); // unticked without a question
    QVERIFY(!checkBox->isChecked());
    QVERIFY(!(dialog.*flag)());
}

void tst_DataEditChoices::applyToAllIsTakenBack_data()
{
    applyToAll_data();
}

/** Answering No leaves the box unchecked and its flag false; so do Escape and a stray Enter. */
void tst_DataEditChoices::applyToAllIsTakenBack()
{
    QFETCH(QString, box);
    QFETCH(Flag, flag);
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    auto *checkBox = child<QCheckBox>(dialog, box);

    clickAndAnswer(dialog, box, QMessageBox::No);
    QVERIFY(!checkBox->isChecked());
    QVERIFY(!(dialog.*flag)());

    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        DialogDriver driver;
        driver.expect<QMessageBox>(
            [key](QMessageBox &question) { QTest::keyClick(question.focusWidget(), key); });
        QTest::keyClick(checkBox, Qt::Key_Space);
        QCOMPARE(driver.problems(), QString());
        QVERIFY(!checkBox->isChecked());
        QVERIFY(!(dialog.*flag)());
    }
}

void tst_DataEditChoices::nextSongStartsAfresh()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    for (const char *box :
         {"checkBoxToAllAuthor", "checkBoxToAllArtist", "checkBoxToAllGenre", "checkBoxToAllTitle"})
        clickAndAnswer(dialog, QLatin1String(box), QMessageBox::Yes);

    SongInfo next = song();
    next.title = QStringLiteral("Volare");
    dialog.setSong(next);
    QVERIFY(!dialog.applyToAllAuthor());
    QVERIFY(!dialog.applyToAllArtist());
    QVERIFY(!dialog.applyToAllGenre());
    QVERIFY(!dialog.applyToAllTitle());
    for (const QCheckBox *box : dialog.findChildren<QCheckBox *>())
        QVERIFY2(!box->isChecked(), qPrintable(box->objectName()));
    QVERIFY(!child<QCheckBox>(dialog, QStringLiteral("checkBoxToAllTitle"))->isEnabled());
    QVERIFY(child<QRadioButton>(dialog, QStringLiteral("radioButtonTitle1"))->isChecked());
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), QStringLiteral("Volare"));
}

QTEST_MAIN(tst_DataEditChoices)
#include "tst_dataeditchoices.moc"
