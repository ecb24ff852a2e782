#pragma once

#include <QList>
#include <QUrl>

QT_BEGIN_NAMESPACE
class QFileDialog;
QT_END_NAMESPACE

namespace tarvel4 {

/** Shows the mounted cards and sticks, with the room left on each, beside the files of a dialog, as
 * long as it lives. A system's own dialog has a way of its own to do so. */
class MediaSidebar
{
public:
    explicit MediaSidebar(QFileDialog &dialog);
    /** Takes them out again: Qt would show them in the dialogs of other programs. */
    ~MediaSidebar();
    MediaSidebar(const MediaSidebar &) = delete;
    MediaSidebar &operator=(const MediaSidebar &) = delete;

private:
    QFileDialog &m_dialog;
    QList<QUrl> m_before;
};

} // namespace tarvel4
