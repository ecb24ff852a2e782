#pragma once

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"

namespace tarvel4 {

/** Says yes to everything and shows nothing. */
class SilentHost : public Progress, public Questions, public Messages
{
public:
    void beginProgress(const ProgressTexts &, int) override {}
    void setProgressMaximum(int) override {}
    void setProgress(int) override {}
    void processPendingEvents() override {}
    void endProgress() override {}
    bool wasCancelled() const override { return false; }
    Answer askNotPublished(const QString &) override { return Answer::YesToAll; }
    Answer askOverwrite(const QString &) override { return Answer::YesToAll; }
    BackupChoice askBackup() override { return {BackupChoice::ProceedWithout, QString()}; }
    ProceedChoice askProceed(const ImportSummary &) override { return {}; }
    void information(const QString &, const QString &, const QStringList &) override {}
    void warning(const QString &, const QString &, const QStringList &) override {}
    void critical(const QString &, const QString &, const QStringList &) override {}
};

} // namespace tarvel4
