#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "tests/ui/forms.h"
#include "ui/elidedlabel.h"
#include "ui/listcompleter.h"
#include "ui/unbrokenlabel.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QHelpEvent>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

using namespace tarvel4;

namespace {

QImage picture(QWidget &widget, const QSize &size)
{
    widget.resize(size);
    return widget.grab().toImage();
}

} // namespace

/** Widgets of our own: the completer of a list, the shortened label. */
class tst_Widgets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dialog.reset(new QDialog);
        m_box = new QComboBox;
        auto *button = new QPushButton;
        button->setDefault(true);
        connect(button, &QPushButton::clicked, m_dialog.data(), &QDialog::accept);
        auto *layout = new QVBoxLayout(m_dialog.data());
        layout->addWidget(m_box);
        layout->addWidget(button);
        m_box->setEditable(true);
        m_box->setInsertPolicy(QComboBox::NoInsert);
        m_box->addItems(
            {QString(), text("ABBA"), text("Abba Gold"), text("ÀBACO"), text("Zucchero")});
        m_completer = new ListCompleter(m_box);
        QVERIFY(activate(*m_dialog));
        m_box->setFocus();
    }
    void cleanup() { m_dialog.reset(); }

    void offers_data()
    {
        const Table<QString, QStringList> row;
        row("what goes on from the typed text, in any case of letters", "aB",
            strings({"ABBA", "Abba Gold"}));
        row("accented letters in any case", "à", strings({"ÀBACO"}));
        row("nothing where nothing goes on", "x", QStringList());
        row("nothing for the middle of an entry", "ucch", QStringList());
        row("nothing for no text", QString(), QStringList());
    }
    void offers()
    {
        const auto [typed, offered] = cells<QString, QStringList>();
        QCOMPARE(type(typed), offered);
    }

    void textIsNotTouchedByOffering()
    {
        type(text("ab"));
        QCOMPARE(m_box->currentText(), text("ab"));
        QTest::keyClick(m_box->lineEdit(), Qt::Key_Backspace);
        QTest::keyClick(m_box->lineEdit(), Qt::Key_Backspace);
        QVERIFY(!m_completer->popup()->isVisible());
        QCOMPARE(m_box->currentText(), QString());
    }

    void enterTakesTheChosenOffer()
    {
        type(text("abba"));
        QTest::keyClick(m_completer->popup(), Qt::Key_Down);
        QTest::keyClick(m_completer->popup(), Qt::Key_Down);
        QTest::keyClick(m_completer->popup(), Qt::Key_Return);
        QCOMPARE(m_box->currentText(), text("Abba Gold"));
        QVERIFY(!m_completer->popup()->isVisible());
        QVERIFY(m_dialog->isVisible());
        QTest::keyClick(m_box->lineEdit(), Qt::Key_Return);
        QVERIFY(!m_dialog->isVisible());
    }

    void enterWithoutAChoiceIsTheDialogs()
    {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            init();
            type(text("ab"));
            QVERIFY(m_completer->popup()->isVisible());
            QTest::keyClick(m_completer->popup(), key);
            QCOMPARE(m_dialog->result(), static_cast<int>(QDialog::Accepted));
            QVERIFY(!m_dialog->isVisible());
            QCOMPARE(m_box->currentText(), text("ab"));
        }
    }

    void escapeClosesTheOffersFirst()
    {
        type(text("ab"));
        QTest::keyClick(m_completer->popup(), Qt::Key_Escape);
        QVERIFY(!m_completer->popup()->isVisible());
        QVERIFY(m_dialog->isVisible());
        QTest::keyClick(m_box->lineEdit(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
    }

    void clickedOfferIsTaken()
    {
        type(text("zu"));
        QAbstractItemView *const offers = m_completer->popup();
        const QPoint place = offers->visualRect(offers->model()->index(0, 0)).center();
        QTest::mouseClick(offers->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QCOMPARE(m_box->currentText(), text("Zucchero"));
        QVERIFY(m_dialog->isVisible());
    }

    void listChangedLaterIsOffered()
    {
        m_box->clear();
        m_box->addItems({text("Mina"), text("Mia Martini")});
        QCOMPARE(type(text("mi")), strings({"Mina", "Mia Martini"}));
    }

    void longTextsAreShortened_data()
    {
        const Table<QString, QString> row;
        const QString longName = QString(100, QLatin1Char('x')) + text(".mid");
        row("a short text is drawn as it is, and needs no tip", "<b>a & b</b>.mid", QString());
        row("a long text is shortened in its middle, and its tip has all of it, as it is",
            text("<b>") + longName, text("<p>&lt;b&gt;") + longName + text("</p>"));
        row("10,000 characters", QString(10000, QLatin1Char('W')),
            text("<p>%1</p>").arg(QString(10000, QLatin1Char('W'))));
        row("a line break makes no second line", "a\nb\nc.mid", "<p>a\nb\nc.mid</p>");
        row("no text", QString(), QString());
    }
    void longTextsAreShortened()
    {
        const auto [whole, tip] = cells<QString, QString>();
        ElidedLabel label;
        label.setText(whole);
        QCOMPARE(label.text(), whole);
        QVERIFY(label.sizeHint().width() <= label.fontMetrics().averageCharWidth() * 60);
        QVERIFY(label.minimumSizeHint().width() <= label.fontMetrics().averageCharWidth() * 12);
        QCOMPARE(label.sizeHint().height(), label.fontMetrics().height());

        QLabel plain;
        plain.setTextFormat(Qt::PlainText);
        plain.setText(plain.fontMetrics().elidedText(
            QString(whole).replace(QLatin1Char('\n'), QLatin1Char(' ')), Qt::ElideMiddle, 300));
        QCOMPARE(picture(label, QSize(300, 30)), picture(plain, QSize(300, 30)));

        label.show();
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&label, &event);
        QCOMPARE(QToolTip::text(), tip);
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void sentencesAreShortenedAtTheirEnd()
    {
        ElidedLabel label;
        label.setElideMode(Qt::ElideRight);
        label.setText(QString(100, QLatin1Char('x')) + text(" end"));
        QLabel plain;
        plain.setText(plain.fontMetrics().elidedText(label.text(), Qt::ElideRight, 300));
        QCOMPARE(picture(label, QSize(300, 30)), picture(plain, QSize(300, 30)));
    }

    void textsWrapBetweenWholeNamesAndCounts()
    {
        const QString summary =
            text("Sono stati esaminti 1200 files, trovate 1150 songs di cui 4 di (c)K-Varo");
        UnbrokenLabel label;
        label.setText(summary);
        QLabel expected;
        expected.setTextFormat(Qt::PlainText);
        expected.setWordWrap(true);
        expected.setText(text("Sono stati esaminti 1200\u00A0files, trovate 1150\u00A0songs di cui "
                              "4\u00A0di (c)K\u2011Varo"));
        for (int width = expected.minimumSizeHint().width(); width < 700; width += 10) {
            QCOMPARE(label.heightForWidth(width), expected.heightForWidth(width));
            const QSize size(width, expected.heightForWidth(width));
            QCOMPARE(picture(label, size), picture(expected, size));
        }
        QCOMPARE(label.text(), summary); // required, and what a screen reader gets
        QCOMPARE(label.minimumSizeHint().width(), expected.minimumSizeHint().width());
        QCOMPARE(label.sizeHint().height(), label.heightForWidth(label.sizeHint().width()));
    }

private:
    /** Types a text into the empty box and tells what is offered. */
    QStringList type(const QString &typed)
    {
        m_box->lineEdit()->clear();
        typeText(m_box->lineEdit(), typed);
        QStringList offered;
        for (int i = 0; m_completer->popup()->isVisible() && i < m_completer->completionCount();
             ++i) {
            m_completer->setCurrentRow(i);
            offered.append(m_completer->currentCompletion());
        }
        return offered;
    }

    QScopedPointer<QDialog> m_dialog;
    QComboBox *m_box = nullptr;
    ListCompleter *m_completer = nullptr;
};

QTEST_MAIN(tst_Widgets)
#include "tst_widgets.moc"
