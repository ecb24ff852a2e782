#pragma once

#include "library/songedit.h"
#include "ui/editplace.h"

#include <QCoreApplication>

#include <optional>

namespace tarvel4 {

class DataEditDialog;
struct EditSummary;
class WindowHost;

/**
 * Lets the user correct the song of a row and, from there, those before and after it; carries what
 * was applied to all to the others. What was typed stays in the dialog until it is saved or given
 * up. Good for one dialog.
 */
class ManualEdit
{
    Q_DECLARE_TR_FUNCTIONS(ManualEdit)

public:
    explicit ManualEdit(const EditPlace &at)
        : m_at(at)
    {}

    /** Shows nothing where the song can't be read; tells which songs could not be saved. */
    void editRow(int row);

    /** Tells which songs were not saved; nothing where there are none. */
    static void tellUnsaved(WindowHost &host, const EditSummary &summary);

private:
    bool open(int row, DataEditDialog &dialog);
    bool load(const QString &path, SongOutcome &failure);
    bool save(DataEditDialog &dialog);
    bool saveTo(SongEdit &song, const SongInfo &edited, const DataEditDialog &dialog,
                EditSummary &summary);
    void step(int direction, DataEditDialog &dialog);
    int neighbour(int row, int direction) const;
    int rowOf(const QString &path, int near) const;

    const EditPlace m_at;
    int m_row = -1;
    bool m_hasEditedAll = false;
    SongInfo m_record; ///< as it was read last
    std::optional<SongEdit> m_song; ///< none where it can't be read again after a save
};

} // namespace tarvel4
