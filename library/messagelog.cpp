#include "library/messagelog.h"

#include "library/programversion.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdlib>

namespace tarvel4 {

namespace {

const char *tagOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "D| ";
    case QtWarningMsg:
        return "W| ";
    case QtCriticalMsg:
        return "C| ";
    case QtFatalMsg:
        return "F| ";
    case QtInfoMsg:
        break;
    }
    return nullptr;
}

void appendToLog(const QByteArray &line)
{
    const QString name = QString::fromLatin1(MessageLog::fileName);
    const QFileInfo info(name);
    if (info.exists() && !info.isFile())
        return; // opening a FIFO would wait for its reader

    QFile file(name);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        file.write(line);
}

} // namespace

void MessageLog::writeMessage(QtMsgType type, const QMessageLogContext &context,
                              const QString &text)
{
    Q_UNUSED(context)
    if (const char *tag = tagOf(type)) {
        const QString time =
            QDateTime::currentDateTime().toString(QStringLiteral("[dd-MM-yyyy hh:mm:ss]"));
        appendToLog(time.toUtf8() + tag + text.toUtf8() + '\n');
    }
    if (type == QtFatalMsg)
        std::abort();
}

void MessageLog::dropMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    Q_UNUSED(context)
    Q_UNUSED(text)
    if (type == QtFatalMsg)
        std::abort();
}

void MessageLog::silence()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    qInstallMessageHandler(&MessageLog::dropMessage);
}

void MessageLog::start()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    qInstallMessageHandler(&MessageLog::writeMessage);
    writeBanner();
}

void MessageLog::writeBanner()
{
    const QString bar(78, QLatin1Char('='));
    qDebug("|%s|", qPrintable(bar));
    qDebug("V ========================  Log start  ======================================= V");
    qDebug("(c)K-Varo Tarvel4 Soft");
    qDebug("Version:  %s", programVersion());
    qDebug("Build:    %s", qPrintable(buildStamp()));
    qDebug("%s", "");
}

QString MessageLog::buildStamp()
{
    return QStringLiteral(__DATE__ " - " __TIME__);
}

} // namespace tarvel4
