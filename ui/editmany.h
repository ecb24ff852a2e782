#pragma once

#include "ui/editplace.h"

#include <QCoreApplication>
#include <QVector>

namespace tarvel4 {

class EditManyDialog;
struct EditSummary;

/** Gives the songs that the user chooses among those on show the same genre, artist or author, as
 * one change that is undone at once. Good for one dialog. */
class EditMany
{
    Q_DECLARE_TR_FUNCTIONS(EditMany)

public:
    explicit EditMany(const EditPlace &at)
        : m_at(at)
    {}

    /** Starts with the table's current row chosen. Songs that are not saved are told, and offered
     * again with what was typed. */
    void run();

private:
    QVector<int> shownRows() const;
    EditSummary save(const EditManyDialog &dialog, const QVector<int> &rows, QVector<int> &unsaved);

    const EditPlace m_at;
};

} // namespace tarvel4
