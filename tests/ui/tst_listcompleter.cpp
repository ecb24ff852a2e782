#include "tests/ui/typing.h"
#include "ui/listcompleter.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

using namespace tarvel4;

class tst_ListCompleter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dialog.reset(); }

    void offers_data();
    void offers();
    void textIsNotTouchedByOffering();
    void leavingTheBoxKeepsTheText_data();
    void leavingTheBoxKeepsTheText();
    void enterTakesTheChosenOffer();
    void enterWithoutAChoiceIsTheDialogs_data();
    void enterWithoutAChoiceIsTheDialogs();
    void escapeClosesTheOffersFirst();
    void clickedOfferIsTaken();
    void listChangedLaterIsOffered();

private:
    QStringList type(const QString &text)
    {
        m_box->lineEdit()->clear();
        typeText(m_box->lineEdit(), text);
        QStringList offered;
        if (m_completer->popup()->isVisible()) {
            for (int i = 0; i < m_completer->completionCount(); ++i) {
                m_completer->setCurrentRow(i);
                offered.append(m_completer->currentCompletion());
            }
        }
        return offered;
    }

    QScopedPointer<QDialog> m_dialog;
    QComboBox *m_box = nullptr;
    ListCompleter *m_completer = nullptr;
    QPushButton *m_button = nullptr;
};

void tst_ListCompleter::init()
{
    m_dialog.reset(new QDialog);
    m_box = new QComboBox;
    m_button = new QPushButton;
    m_button->setDefault(true);
    connect(m_button, &QPushButton::clicked, m_dialog.data(), &QDialog::accept);
    auto *layout = new QVBoxLayout(m_dialog.data());
    layout->addWidget(m_box);
    layout->addWidget(m_button);
    m_box->setEditable(true);
    m_box->setInsertPolicy(QComboBox::NoInsert);
    m_box->addItems({QString(), QStringLiteral("ABBA"), QStringLiteral("Abba Gold"),
                     QStringLiteral("ÀBACO"), QStringLiteral("Zucchero")});
    m_completer = new ListCompleter(m_box);
    QVERIFY(activate(*m_dialog));
    m_box->setFocus();
}

void tst_ListCompleter::offers_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("what goes on from the typed text, in any case of letters")
        << QStringLiteral("aB")
        << QStringList({QStringLiteral("ABBA"), QStringLiteral("Abba Gold")});
    QTest::newRow("accented letters in any case")
        << QStringLiteral("à") << QStringList(QStringLiteral("ÀBACO"));
    QTest::newRow("nothing where nothing goes on") << QStringLiteral("x") << QStringList();
    QTest::newRow("nothing for the middle of an entry") << QStringLiteral("ucch") << QStringList();
    QTest::newRow("nothing for no text") << QString() << QStringList();
}

void tst_ListCompleter::offers()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, offered);
    QCOMPARE(type(typed), offered);
}

void tst_ListCompleter::textIsNotTouchedByOffering()
{
    type(QStringLiteral("ab"));
    QCOMPARE(m_box->currentText(), QStringLiteral("ab"));
    type(QString());
    typeText(m_box->lineEdit(), QStringLiteral("ab"));
    QTest::keyClick(m_box->lineEdit(), Qt::Key_Backspace);
    QTest::keyClick(m_box->lineEdit(), Qt::Key_Backspace);
    QVERIFY(!m_completer->popup()->isVisible());
    QCOMPARE(m_box->currentText(), QString());
}

void tst_ListCompleter::leavingTheBoxKeepsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("an entry in other letters") << QStringLiteral("abba");
    QTest::newRow("the beginning of an entry") << QStringLiteral("Zuc");
    QTest::newRow("no entry") << QStringLiteral("Mina");
    QTest::newRow("nothing") << QString();
}

void tst_ListCompleter::leavingTheBoxKeepsTheText()
{
    QFETCH(QString, text);
    m_box->setEditText(text);
    QTest::keyClick(m_box->lineEdit(), Qt::Key_Tab);
    QTRY_VERIFY(!m_box->hasFocus());
    QCOMPARE(m_box->currentText(), text);
}

void tst_ListCompleter::enterTakesTheChosenOffer()
{
    m_box->lineEdit()->clear();
    typeText(m_box->lineEdit(), QStringLiteral("abba"));
    QTest::keyClick(m_completer->popup(), Qt::Key_Down);
    QTest::keyClick(m_completer->popup(), Qt::Key_Down);
    QTest::keyClick(m_completer->popup(), Qt::Key_Return);
    QCOMPARE(m_box->currentText(), QStringLiteral("Abba Gold"));
    QVERIFY(!m_completer->popup()->isVisible());
    QVERIFY(m_dialog->isVisible());
    QTest::keyClick(m_box->lineEdit(), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
}

void tst_ListCompleter::enterWithoutAChoiceIsTheDialogs_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void tst_ListCompleter::enterWithoutAChoiceIsTheDialogs()
{
    QFETCH(int, key);
    m_box->lineEdit()->clear();
    typeText(m_box->lineEdit(), QStringLiteral("ab"));
    QVERIFY(m_completer->popup()->isVisible());
    QTest::keyClick(m_completer->popup(), Qt::Key(key));
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_box->currentText(), QStringLiteral("ab"));
}

void tst_ListCompleter::escapeClosesTheOffersFirst()
{
    m_box->lineEdit()->clear();
    typeText(m_box->lineEdit(), QStringLiteral("ab"));
    QTest::keyClick(m_completer->popup(), Qt::Key_Escape);
    QVERIFY(!m_completer->popup()->isVisible());
    QVERIFY(m_dialog->isVisible());
    QTest::keyClick(m_box->lineEdit(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
}

void tst_ListCompleter::clickedOfferIsTaken()
{
    m_box->lineEdit()->clear();
    typeText(m_box->lineEdit(), QStringLiteral("zu"));
    QAbstractItemView *const offers = m_completer->popup();
    const QPoint place = offers->visualRect(offers->model()->index(0, 0)).center();
    QTest::mouseClick(offers->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(m_box->currentText(), QStringLiteral("Zucchero"));
    QVERIFY(m_dialog->isVisible());
}

void tst_ListCompleter::listChangedLaterIsOffered()
{
    m_box->clear();
    m_box->addItems({QStringLiteral("Mina"), QStringLiteral("Mia Martini")});
    QCOMPARE(type(QStringLiteral("mi")),
             QStringList({QStringLiteral("Mina"), QStringLiteral("Mia Martini")}));
}

QTEST_MAIN(tst_ListCompleter)
#include "tst_listcompleter.moc"
