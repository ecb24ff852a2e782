#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

QT_BEGIN_NAMESPACE
class QProcess;
QT_END_NAMESPACE

namespace tarvel4 {

/** How a run of the program ended, and what it said. */
struct Run
{
    int status = -1; ///< -1: it did not end by itself
    QByteArray out;
    QByteArray err;

    /** The records of a run with --json; fails the test where a line is no JSON object. */
    QVector<QJsonObject> records() const;

    /** What was said, but of the journal: whatever limits the size of a song limits its size too.
     */
    QByteArray saidOfSongs() const;

    /** A text of each record, empty where it has none. */
    QStringList texts(const char *key) const;

    /** All of it, for the message of a test that failed. */
    QByteArray told() const;
};

/** Compares the exit status of a run; a failure shows what was said. */
#define VERIFY_STATUS(run, expected)                                                               \
    do {                                                                                           \
        const tarvel4::Run &ended = run;                                                           \
        QVERIFY2(ended.status == (expected), ended.told().constData());                            \
    } while (false)

inline bool operator==(const Run &left, const Run &right)
{
    return left.status == right.status && left.out == right.out && left.err == right.err;
}

/** For QCOMPARE(). */
char *toString(const Run &run);

/** Runs tarvel4soft-cli in a folder, as a user does. */
class Program
{
public:
    explicit Program(const QString &folder);

    Run run(const QStringList &arguments) const;

    /** Runs a line of the shell, where "$cli" is the program. */
    Run shell(const QString &line) const;

    /**
     * The same on a terminal, with keys typed into it; out is what the terminal was sent. Each
     * entry of \a keys is typed once the text before its tab was seen: "text\tkeys".
     */
    Run terminal(const QString &line, const QStringList &keys = {}) const;

    void setEnvironment(const QString &name, const QString &value);

private:
    Run finish(QProcess &process, const QStringList &keys) const;

    QString m_folder;
    QVector<QPair<QString, QString>> m_environment;
};

/** True when \a name can be started. */
bool hasTool(const QString &name);

/** True when the system lets a test make calls of the program fail. */
bool canTrace();

/** What stands ahead of a command in a line of the shell, so that it can't open the file; empty
 * where \a error is. */
QString failingToOpen(const QString &file, const QString &error);

} // namespace tarvel4
