#pragma once

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The SQLite file behind the Journal: opened when it is needed, set aside where it can't be used,
 * so that nothing that is wrong with it stops a save. */
class JournalFile
{
    Q_DECLARE_TR_FUNCTIONS(JournalFile)

public:
    enum class Access {
        Read, ///< changes nothing on the disk
        Write ///< makes the file and its folder, for their owner only
    };

    /** Told, in a translated sentence, what is wrong with the journal itself; once each. */
    using Notice = std::function<void(const QString &)>;

    JournalFile(const QString &folder, Notice notice);
    ~JournalFile();
    Q_DISABLE_COPY(JournalFile)

    const QString &folder() const { return m_folder; }
    QString path() const;
    /** True when it holds anything. */
    bool exists() const;

    /** Keeps the file open until the last close(). False, and the user is told why, where it can't
     * be used; false as well where there is none to read. */
    bool open(Access access);
    void close();

    QSqlQuery prepare(const char *statement) const;
    /** False, and the user is told why, when it fails; a damaged file has then been set aside and
     * is closed. */
    bool exec(QSqlQuery &query);
    bool exec(const char *statement);
    /** All that \a changes does, on the medium, or nothing. */
    bool transaction(const std::function<bool()> &changes);

    /** False where only older programs have written it: they did not note unfinished undos. */
    bool hasUnfinished() const;

    /** An empty array is a blob too, and not NULL. */
    static QByteArray blob(const QByteArray &bytes)
    {
        return bytes.isNull() ? QByteArray("") : bytes;
    }

    /** True once an open file was set aside; the next open() makes a new one. */
    bool wasSetAside() const { return m_wasSetAside; }

private:
    bool connectTo(Access access);
    bool makeFile();
    bool isOurs();
    bool prepareSchema();
    int version();
    void setAside(const QString &sentence);
    void disconnect();
    void say(const QString &sentence);

    QString m_folder;
    Notice m_notice;
    QString m_connection;
    QSqlDatabase m_db;
    Access m_access = Access::Read;
    int m_users = 0;
    bool m_wasSetAside = false;
    QStringList m_said;
};

} // namespace tarvel4
