#include "ui/fieldnotes.h"

#include "ui/plaintext.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

constexpr int markSize = 16;

// Each has a contrast of at least 3:1 to white and to #1b2733.
constexpr QRgb refusedColour = 0xffe03535;
constexpr QRgb warningColour = 0xffb26a00;
constexpr QRgb hintColour = 0xff2a7f94;

/** A shape and a sign for each grade, for those who see no difference in colour. */
QPixmap markOf(FieldNote::Grade grade, int scale)
{
    const bool isRefused = grade == FieldNote::Grade::Refused;
    const bool isHint = grade == FieldNote::Grade::NearLimit;
    QPixmap pixmap(QSize(markSize, markSize) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour(isRefused ? refusedColour : isHint ? hintColour : warningColour);
    painter.setBrush(colour);
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (isRefused || isHint)
        painter.drawEllipse(QRectF(2, 2, 12, 12));
    else
        painter.drawPolygon(QPolygonF({{8, 2.5}, {14, 13.5}, {2, 13.5}}));
    painter.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::RoundCap));
    if (isRefused) {
        painter.drawLine(QPointF(5.5, 5.5), QPointF(10.5, 10.5));
        painter.drawLine(QPointF(10.5, 5.5), QPointF(5.5, 10.5));
    } else {
        const qreal dot = isHint ? 4.5 : 12;
        painter.drawLine(QPointF(8, isHint ? 7.5 : 6.5), QPointF(8, isHint ? 11.5 : 9));
        painter.drawPoint(QPointF(8, dot));
    }
    return pixmap;
}

QIcon iconOf(FieldNote::Grade grade)
{
    QIcon icon;
    for (const int scale : {1, 2, 3})
        icon.addPixmap(markOf(grade, scale));
    return icon;
}

} // namespace

FieldNotes::FieldNotes(QLabel *icon, QLabel *line, QWidget *form)
    : QObject(form)
    , m_icon(icon)
    , m_line(line)
    , m_form(form)
{
    connect(qApp, &QApplication::focusChanged, this, &FieldNotes::showLine);
    // Told before its children go: a button that still has the focus outlives the labels.
    connect(form, &QObject::destroyed, this, [this] { disconnect(qApp, nullptr, this, nullptr); });
}

void FieldNotes::addField(const QString &key, QLineEdit *edit)
{
    auto *box = qobject_cast<QComboBox *>(edit->parentWidget());
    auto *mark = new QAction(edit);
    mark->setVisible(false);
    edit->addAction(mark, QLineEdit::TrailingPosition);
    QWidget *widget = box ? static_cast<QWidget *>(box) : edit;
    m_fields.append({key, edit, widget, mark, widget->accessibleDescription()});
}

void FieldNotes::show(const QVector<FieldNote> &notes)
{
    m_notes = notes;
    for (const Field &field : std::as_const(m_fields)) {
        const FieldNote *note = noteOf(field.key);
        const QString text = note ? note->text : QString();
        field.mark->setVisible(note);
        field.mark->setIcon(note ? iconOf(note->grade) : QIcon());
        field.mark->setText(text);
        field.mark->setToolTip(PlainText::toolTip(text));
        QStringList described{field.about, text};
        described.removeAll(QString());
        for (QWidget *widget : {field.widget, static_cast<QWidget *>(field.edit)})
            widget->setAccessibleDescription(described.join(QLatin1String(": ")));
    }
    showLine();
}

const FieldNote *FieldNotes::noteOf(const QString &key) const
{
    const auto note = std::find_if(m_notes.cbegin(), m_notes.cend(),
                                   [&key](const FieldNote &n) { return n.field == key; });
    return note == m_notes.cend() ? nullptr : &*note;
}

void FieldNotes::showLine()
{
    const FieldNote *shown = nullptr;
    for (const FieldNote &note : std::as_const(m_notes)) {
        if (!shown || note.grade < shown->grade)
            shown = &note;
    }
    QString name;
    for (const Field &field : std::as_const(m_fields)) {
        const bool isHere =
            m_form->focusWidget() == field.widget || m_form->focusWidget() == field.edit;
        if (isHere && noteOf(field.key))
            shown = noteOf(field.key);
    }
    for (const Field &field : std::as_const(m_fields)) {
        if (shown && shown->field == field.key)
            name = field.widget->accessibleName() + QLatin1String(": ");
    }
    m_line->setText(shown ? name + shown->text : QString());
    m_icon->setPixmap(shown ? iconOf(shown->grade).pixmap(markSize) : QPixmap());
}

} // namespace tarvel4
