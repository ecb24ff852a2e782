#pragma once

#include <QStringList>
#include <QtGlobal>

/** Collects what is written to the debug log while it lives. */
class LogCapture
{
public:
    LogCapture()
        : m_previous(qInstallMessageHandler(keep))
    {
        kept().clear();
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(LogCapture)

    const QStringList &lines() const { return kept(); }

private:
    static void keep(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        kept().append(text);
    }
    static QStringList &kept()
    {
        static QStringList lines;
        return lines;
    }

    QtMessageHandler m_previous;
};
