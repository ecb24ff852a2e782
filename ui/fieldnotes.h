#pragma once

#include "songs/fieldcheck.h"

#include <QObject>

QT_BEGIN_NAMESPACE
class QAction;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * Shows what is to be said of the fields of a form while they are typed into: an icon in each field
 * concerned, and one line of text that is always there, so that nothing jumps. The line is about
 * the field where the user is; else about the gravest.
 */
class FieldNotes : public QObject
{
    Q_OBJECT

public:
    /** Both labels are the form's; \a form owns the notes. */
    FieldNotes(QLabel *icon, QLabel *line, QWidget *form);

    /** \a key: of the field in a song's record. The line calls it by its accessible name. */
    void addField(const QString &key, QLineEdit *edit);

    void show(const QVector<FieldNote> &notes);

private:
    struct Field
    {
        QString key;
        QLineEdit *edit;
        QWidget *widget; ///< the one that has the name and the focus: the combo box around it
        QAction *mark;
        QString about; ///< its own description
    };

    const FieldNote *noteOf(const QString &key) const;
    void showLine();

    QLabel *m_icon;
    QLabel *m_line;
    QWidget *m_form;
    QVector<Field> m_fields;
    QVector<FieldNote> m_notes;
};

} // namespace tarvel4
