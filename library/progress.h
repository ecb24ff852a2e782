#pragma once

#include <QString>

namespace tarvel4 {

/** The texts of a progress display, translated. */
struct ProgressTexts
{
    QString title;
    QString label;
    QString cancel;
};

/** How far a job is, shown to whoever waits for it, and whether that one wants it to stop. */
class Progress
{
public:
    virtual ~Progress() = default;

    /** Shows a progress display in place of the running one, if any. */
    virtual void beginProgress(const ProgressTexts &texts, int maximum) = 0;
    /** Changes the range of the running progress. */
    virtual void setProgressMaximum(int maximum) = 0;
    /** Shows the value and the label "%1 di %2"; lets pending events pass. */
    virtual void setProgress(int value) = 0;
    /** Shows the value and keeps the label; lets pending events pass. */
    virtual void setProgressValue(int value) { setProgress(value); }
    /** Lets pending events pass without moving the progress. */
    virtual void processPendingEvents() = 0;
    /** Takes the display away; harmless where there is none. */
    virtual void endProgress() = 0;
    virtual bool wasCancelled() const = 0;
};

} // namespace tarvel4
