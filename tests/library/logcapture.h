#pragma once

#include <QStringList>

namespace tarvel4 {

/** Keeps the debug lines written while it lives, and nothing of them reaches the terminal. */
class LogCapture
{
public:
    LogCapture()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(&LogCapture::keep);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(LogCapture)

    static QStringList &lines()
    {
        static QStringList captured;
        return captured;
    }

    static bool has(const QString &line) { return lines().contains(line); }

    /** True when a line holds all of the texts. */
    static bool tells(const QStringList &texts)
    {
        for (const QString &line : lines()) {
            bool all = true;
            for (const QString &text : texts)
                all = all && line.contains(text);
            if (all)
                return true;
        }
        return false;
    }

private:
    static void keep(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        Q_UNUSED(context)
        if (type == QtDebugMsg)
            lines().append(text);
        else
            fprintf(stderr, "%s\n", qPrintable(text));
    }

    QtMessageHandler m_previous;
};

} // namespace tarvel4
