#pragma once

#include <QString>

namespace tarvel4 {

/** A file that is locked as long as its run lives: however the program ends, the system lets go of
 * it. The lock is SQLite's, which has one on every system. */
class RunLock
{
public:
    explicit RunLock(const QString &path);
    ~RunLock();
    Q_DISABLE_COPY(RunLock)

    /** False where another run, of this program too, holds it, or the file can't be made. */
    bool isHeld() const { return m_isHeld; }

    /** A name that no other run's lock has. */
    static QString newName();

    /** Removes what runs that were killed left in \a folder. */
    static void removeEnded(const QString &folder);

private:
    QString m_path;
    QString m_connection;
    bool m_isHeld = false;
};

} // namespace tarvel4
