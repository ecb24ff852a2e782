#include "tests/ui/dataeditfixture.h"
#include "tests/ui/focuschain.h"

#include <QLabel>

using namespace tarvel4;

using namespace DataEditFixture;

using Act = std::function<void(DataEditDialog &)>;
Q_DECLARE_METATYPE(Act)

/** The editor without a mouse, and its results. */
class tst_DataEditKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void passingThroughChangesNothing_data();
    void passingThroughChangesNothing();
    void typedArtistIsCompleted();
    void results_data();
    void results();
    void enterSavesFromEveryField_data();
    void enterSavesFromEveryField();
    void tabGoesFromTopToBottom();
    void captionsLeadToTheirFields_data();
    void captionsLeadToTheirFields();
};

void tst_DataEditKeyboard::passingThroughChangesNothing_data()
{
    QTest::addColumn<QString>("artist");
    QTest::newRow("a listed artist") << QStringLiteral("ABBA");
    QTest::newRow("one that is listed in other letters") << QStringLiteral("Celentano");
    QTest::newRow("the beginning of a listed one") << QStringLiteral("Cele");
    QTest::newRow("one that is not listed") << QStringLiteral("Mina");
    QTest::newRow("none") << QString(QLatin1String(""));
}

void tst_DataEditKeyboard::passingThroughChangesNothing()
{
    QFETCH(QString, artist);
    DataEditDialog dialog;
    SongInfo info = song();
    info.artist = artist;
    fill(dialog, info);
    QVERIFY(activate(dialog));
    dialog.findChild<QLineEdit *>(QStringLiteral("titleLineEdit"))->setFocus();
    for (int i = 0; i < 15; ++i)
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);

    SongInfo saved;
    dialog.getSong(saved);
    QCOMPARE(saved.artist, artist);
    QCOMPARE(saved.genre, info.genre);
    QCOMPARE(saved.title, info.title);
    QCOMPARE(saved.key, info.key);
    QCOMPARE(saved.length, info.length);
    QCOMPARE(saved.bpm, info.bpm);
}

void tst_DataEditKeyboard::typedArtistIsCompleted()
{
    DataEditDialog dialog;
    fill(dialog, song());
    QVERIFY(activate(dialog));
    QLineEdit *const artist = combo(dialog, "artistComboBox")->lineEdit();
    artist->setFocus();
    retype(artist, QStringLiteral("ab"));
    QWidget *const offers = QApplication::activePopupWidget();
    QVERIFY(offers);
    QTest::keyClick(offers, Qt::Key_Down);
    QTest::keyClick(offers, Qt::Key_Return);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(dialog.isVisible());
    SongInfo saved;
    dialog.getSong(saved);
    QCOMPARE(saved.artist, QStringLiteral("ABBA"));
}

void tst_DataEditKeyboard::results_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    QTest::newRow("\"Salva\" gives 1")
        << Act([](DataEditDialog &dialog) { click(dialog, "savePushButton"); }) << 1;
    QTest::newRow("\"Annulla\" gives 0")
        << Act([](DataEditDialog &dialog) { click(dialog, "exitPushButton"); }) << 0;
    QTest::newRow("closing the window gives 0")
        << Act([](DataEditDialog &dialog) { dialog.close(); }) << 0;
    QTest::newRow("Escape gives 0") << Act([](DataEditDialog &dialog) {
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    }) << 0;
}

void tst_DataEditKeyboard::results()
{
    QFETCH(Act, act);
    QFETCH(int, result);
    DialogDriver driver;
    driver.expect<DataEditDialog>(act);
    DataEditDialog dialog;
    dialog.setSong(song());
    QCOMPARE(dialog.exec(), result);
    QCOMPARE(driver.problems(), QString());
}

void tst_DataEditKeyboard::enterSavesFromEveryField_data()
{
    QTest::addColumn<QString>("field");
    for (const char *field : {"titleLineEdit", "radioButtonTitle1", "checkBoxToAllArtist",
                              "artistComboBox", "genreComboBox", "authorLineEdit", "lenMmLineEdit",
                              "lenSsLineEdit", "keyComboBox", "bpmLineEdit", "savePushButton"})
        QTest::newRow(field) << QString::fromLatin1(field);
}

void tst_DataEditKeyboard::enterSavesFromEveryField()
{
    QFETCH(QString, field);
    DialogDriver driver;
    driver.expect<DataEditDialog>([field](DataEditDialog &dialog) {
        auto *widget = dialog.findChild<QWidget *>(field);
        widget->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    DataEditDialog dialog;
    SongInfo info = song();
    info.bpm = 95; // two digits, where three fit
    fill(dialog, info);
    dialog.hide();
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(driver.problems(), QString());
}

void tst_DataEditKeyboard::tabGoesFromTopToBottom()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    QStringList chain = focusChain(edit(dialog, "titleLineEdit"));
    chain.removeAll(QString()); // the line edits inside the boxes
    QCOMPARE(
        chain.join(QLatin1Char(' ')),
        QStringLiteral("titleLineEdit radioButtonTitle1 radioButtonTitle2 checkBoxToAllTitle "
                       "artistComboBox checkBoxToAllArtist genreComboBox checkBoxToAllGenre "
                       "authorLineEdit checkBoxToAllAuthor lenMmLineEdit lenSsLineEdit keyComboBox "
                       "bpmLineEdit savePushButton exitPushButton"));
    int y = 0;
    for (const QString &name : qAsConst(chain)) {
        const auto *widget = child<QWidget>(dialog, name);
        const int top = widget->mapTo(&dialog, QPoint(0, 0)).y();
        QVERIFY2(top >= y - widget->height(), qPrintable(name)); // within a row, from left to right
        y = top;
    }
}

void tst_DataEditKeyboard::captionsLeadToTheirFields_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("field");
    const QVector<QPair<QString, QString>> buddies = {
        {QStringLiteral("Titolo Song:"), QStringLiteral("titleLineEdit")},
        {QStringLiteral("Interprete:"), QStringLiteral("artistComboBox")},
        {QStringLiteral("Genere Musicale:"), QStringLiteral("genreComboBox")},
        {QStringLiteral("Autore:"), QStringLiteral("authorLineEdit")},
        {QStringLiteral("Durata:"), QStringLiteral("lenMmLineEdit")},
        {QStringLiteral("mm"), QStringLiteral("lenMmLineEdit")},
        {QStringLiteral("ss"), QStringLiteral("lenSsLineEdit")},
        {QStringLiteral("Tonalità:"), QStringLiteral("keyComboBox")},
        {QStringLiteral("BPM:"), QStringLiteral("bpmLineEdit")}};
    for (const auto &buddy : buddies)
        QTest::newRow(qPrintable(buddy.first)) << buddy.first << buddy.second;
}

void tst_DataEditKeyboard::captionsLeadToTheirFields()
{
    QFETCH(QString, caption);
    QFETCH(QString, field);
    const DataEditDialog dialog;
    const auto labels = dialog.findChildren<QLabel *>();
    const auto label = std::find_if(labels.begin(), labels.end(), [&caption](const QLabel *each) {
        return each->text() == caption;
    });
    QVERIFY(label != labels.end());
    QVERIFY((*label)->buddy());
    QCOMPARE((*label)->buddy()->objectName(), field);
}

QTEST_MAIN(tst_DataEditKeyboard)
#include "tst_dataeditkeyboard.moc"
