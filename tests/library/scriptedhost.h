#pragma once

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"

#include <QFileInfo>
#include <QStringList>
#include <QVector>

#include <functional>

namespace tarvel4 {

/** A host that answers from a script and keeps what it was asked, told and shown, in order. */
class ScriptedHost : public Progress, public Questions, public Messages
{
public:
    // the script
    QVector<Answer> notPublishedAnswers; ///< used up from the front; then "closed by its frame"
    QVector<Answer> overwriteAnswers; ///< the same
    BackupChoice backupChoice{BackupChoice::ProceedWithout, QString()};
    ProceedChoice proceedChoice;
    int cancelAtProgress = -1; ///< cancelled once this value is shown; 0: before the first song
    std::function<void()> onQuestion; ///< called while a question is open
    std::function<void(int)> onProgress; ///< called while a value is shown

    // what happened, one line each: "begin TITLE|LABEL|CANCEL|MAXIMUM", "maximum N", "progress N",
    // "value N", "processPendingEvents", "end", "ask backup", "ask proceed FOUND UNKNOWN
    // PUBLISHED", "ask unpublished NAME", "ask overwrite NAME", "information TITLE|TEXT", "warning
    // ...", "critical ...", "recovered OUTCOME PATH"
    QStringList events;
    QStringList comparedPaths; ///< of the last "ask overwrite"

    /** The events that begin with \a word. */
    QStringList eventsOf(const QString &word) const
    {
        QStringList found;
        for (const QString &event : events) {
            if (event == word || event.startsWith(word + QLatin1Char(' ')))
                found.append(event);
        }
        return found;
    }

    void beginProgress(const ProgressTexts &texts, int maximum) override
    {
        const QStringList parts{texts.title, texts.label, texts.cancel, QString::number(maximum)};
        add("begin", parts.join(QLatin1Char('|')));
        m_cancelled = cancelAtProgress == 0;
    }
    void setProgressMaximum(int maximum) override { add("maximum", QString::number(maximum)); }
    void setProgress(int value) override
    {
        add("progress", QString::number(value));
        m_cancelled = m_cancelled || value == cancelAtProgress;
        if (onProgress)
            onProgress(value);
    }
    void setProgressValue(int value) override { add("value", QString::number(value)); }
    void processPendingEvents() override { events.append(QStringLiteral("processPendingEvents")); }
    void endProgress() override { events.append(QStringLiteral("end")); }
    bool wasCancelled() const override { return m_cancelled; }

    void recovered(const QString &path, Recovery::Result outcome, const Outcome &) override
    {
        add("recovered", QString::number(static_cast<int>(outcome)) + QLatin1Char(' ') + path);
    }

    Answer askNotPublished(const QString &fileName) override
    {
        add("ask unpublished", fileName);
        return nextOf(notPublishedAnswers);
    }
    Answer askOverwrite(const QString &source, const QString &destination) override
    {
        add("ask overwrite", QFileInfo(source).fileName());
        comparedPaths = QStringList{source, destination};
        return nextOf(overwriteAnswers);
    }
    BackupChoice askBackup() override
    {
        events.append(QStringLiteral("ask backup"));
        return backupChoice;
    }
    ProceedChoice askProceed(const ImportSummary &summary) override
    {
        add("ask proceed",
            QStringLiteral("%1 %2 %3")
                .arg(summary.found)
                .arg(summary.unknown)
                .arg(summary.published));
        return proceedChoice;
    }

    void information(const QString &title, const QString &text, const QStringList &details) override
    {
        add("information", (QStringList{title, text} + details).join(QLatin1Char('|')));
    }
    void warning(const QString &title, const QString &text, const QStringList &details) override
    {
        add("warning", (QStringList{title, text} + details).join(QLatin1Char('|')));
    }
    void critical(const QString &title, const QString &text, const QStringList &details) override
    {
        add("critical", (QStringList{title, text} + details).join(QLatin1Char('|')));
    }

private:
    void add(const char *word, const QString &rest)
    {
        events.append(QLatin1String(word) + QLatin1Char(' ') + rest);
    }

    Answer nextOf(QVector<Answer> &answers)
    {
        if (onQuestion)
            onQuestion();
        return answers.isEmpty() ? Answer::Yes : answers.takeFirst();
    }

    bool m_cancelled = false;
};

} // namespace tarvel4
