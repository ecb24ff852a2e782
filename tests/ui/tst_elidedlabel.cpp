#include "ui/elidedlabel.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

using namespace tarvel4;

class tst_ElidedLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizeIsBounded_data();
    void sizeIsBounded();
    void shortTextIsDrawnAsALabelDrawsIt();
    void longTextIsShortenedInItsMiddle();
    void toolTips_data();
    void toolTips();

private:
    static QImage picture(QWidget &widget, const QSize &size)
    {
        widget.resize(size);
        return widget.grab().toImage();
    }
};

void tst_ElidedLabel::sizeIsBounded_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << QStringLiteral("a.mid");
    QTest::newRow("10,000 characters") << QString(10000, QLatin1Char('W'));
    QTest::newRow("100 lines") << QString(100, QLatin1Char('\n'));
    QTest::newRow("empty") << QString();
}

void tst_ElidedLabel::sizeIsBounded()
{
    QFETCH(QString, text);
    ElidedLabel label;
    label.setText(text);
    QCOMPARE(label.text(), text);
    QVERIFY(label.sizeHint().width() <= label.fontMetrics().averageCharWidth() * 60);
    QVERIFY(label.minimumSizeHint().width() <= label.fontMetrics().averageCharWidth() * 12);
    QCOMPARE(label.sizeHint().height(), label.fontMetrics().height());
}

void tst_ElidedLabel::shortTextIsDrawnAsALabelDrawsIt()
{
    ElidedLabel label;
    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    label.setText(QStringLiteral("<b>a & b</b>.mid"));
    plain.setText(label.text());
    QCOMPARE(picture(label, QSize(300, 30)), picture(plain, QSize(300, 30)));
}

void tst_ElidedLabel::longTextIsShortenedInItsMiddle()
{
    ElidedLabel label;
    QLabel plain;
    const QString text =
        QStringLiteral("/music/") + QString(100, QLatin1Char('x')) + QStringLiteral("/azzurro.mid");
    label.setText(text);
    plain.setText(plain.fontMetrics().elidedText(text, Qt::ElideMiddle, 300));
    QVERIFY(plain.text().endsWith(QLatin1String("azzurro.mid")));
    QCOMPARE(picture(label, QSize(300, 30)), picture(plain, QSize(300, 30)));
}

void tst_ElidedLabel::toolTips_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tip");
    QTest::newRow("none where all is seen") << QStringLiteral("a.mid") << QString();
    QTest::newRow("the whole text where it is shortened, as it is")
        << QString(QStringLiteral("<b>") + QString(100, QLatin1Char('x')))
        << QString(QStringLiteral("<p>&lt;b&gt;") + QString(100, QLatin1Char('x'))
                   + QStringLiteral("</p>"));
}

void tst_ElidedLabel::toolTips()
{
    QFETCH(QString, text);
    QFETCH(QString, tip);
    ElidedLabel label;
    label.setText(text);
    label.resize(200, 30);
    label.show();
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(QToolTip::text(), tip);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

QTEST_MAIN(tst_ElidedLabel)
#include "tst_elidedlabel.moc"
