#pragma once

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QProcess;
QT_END_NAMESPACE

namespace tarvel4 {

/** How long the disk check program may take, in milliseconds. */
struct DiskCheckTimings
{
    int toStart = 60000;
    int toFinish = 300000;
};

/** Has the system's disk check program repair a drive, and answers its questions with yes. */
class DiskCheck
{
public:
    enum Result { NotRun = -1, NoErrors = 0, ErrorsFixed = 1, ErrorsLeft = 2 };

    explicit DiskCheck(const DiskCheckTimings &timings = {});

    /**
     * Checks the drive of \a path and lets the user interface process its events meanwhile. NotRun
     * where the path has no drive letter, the program can't be started or does not end in time.
     */
    Result run(const QString &path);

private:
    void readOutput(QProcess &process);

    DiskCheckTimings m_timings;
    QByteArray m_tail; ///< the end of the output since the last answer
    int m_answer = 0;
};

} // namespace tarvel4
