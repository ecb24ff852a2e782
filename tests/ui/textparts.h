#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

namespace tarvel4 {

/** The parts of a window's widgets that show a text. */
class TextParts
{
public:
    struct Part
    {
        QWidget *widget;
        QRect area; ///< in points of the widget
    };

    static QVector<Part> of(QWidget &window)
    {
        TextParts parts;
        QList<QWidget *> widgets = window.findChildren<QWidget *>();
        widgets.append(&window);
        for (QWidget *widget : qAsConst(widgets)) {
            if (widget->isVisible() && !parts.addLine(widget))
                parts.addEntries(widget);
        }
        return parts.m_parts;
    }

private:
    static constexpr int border = 5;

    static QRect inside(const QRect &area)
    {
        return area.adjusted(border, border, -border, -border);
    }

    void add(QWidget *widget, const QRect &area, const QString &text)
    {
        if (!text.isEmpty())
            m_parts.append({widget, area});
    }

    bool addLine(QWidget *widget)
    {
        if (auto *label = qobject_cast<QLabel *>(widget))
            add(label, label->contentsRect(), label->text());
        else if (auto *button = qobject_cast<QAbstractButton *>(widget))
            add(button, inside(button->rect()), button->text());
        else if (auto *edit = qobject_cast<QLineEdit *>(widget))
            add(edit, inside(edit->rect()), edit->text());
        else if (auto *box = qobject_cast<QComboBox *>(widget))
            add(box, inside(box->rect()), box->isEditable() ? QString() : box->currentText());
        else
            return false;
        return true;
    }

    void addEntries(QWidget *widget)
    {
        if (auto *header = qobject_cast<QHeaderView *>(widget)) {
            m_parts.append({header->viewport(), header->viewport()->rect()});
        } else if (auto *view = qobject_cast<QAbstractItemView *>(widget)) {
            addRows(view);
        } else if (auto *bar = qobject_cast<QMenuBar *>(widget)) {
            for (QAction *action : bar->actions())
                add(bar, bar->actionGeometry(action), action->text());
        } else if (auto *menu = qobject_cast<QMenu *>(widget)) {
            for (QAction *action : menu->actions()) // beside their marks
                add(menu, inside(menu->actionGeometry(action)).adjusted(24, 0, 0, 0),
                    action->text());
        } else if (auto *tabs = qobject_cast<QTabBar *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs, inside(tabs->tabRect(i)), tabs->tabText(i));
        } else if (widget->inherits("QTextEdit") || widget->inherits("QPlainTextEdit")) {
            QWidget *page = static_cast<QAbstractScrollArea *>(widget)->viewport();
            add(page, page->rect(), widget->property("plainText").toString());
        }
    }

    void addRows(QAbstractItemView *view)
    {
        if (!view->model())
            return;
        for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row) {
            for (int column = 0; column < view->model()->columnCount(view->rootIndex()); ++column) {
                const QModelIndex cell = view->model()->index(row, column, view->rootIndex());
                const QRect area = view->visualRect(cell);
                if (!area.isEmpty())
                    add(view->viewport(), area.adjusted(2, 2, -2, -2), cell.data().toString());
            }
        }
    }

    QVector<Part> m_parts;
};

} // namespace tarvel4
