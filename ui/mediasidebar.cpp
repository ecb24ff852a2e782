#include "ui/mediasidebar.h"

#include "library/mountedmedia.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QHash>
#include <QListView>
#include <QLocale>
#include <QStyledItemDelegate>

namespace tarvel4 {

namespace {

constexpr int urlRole = Qt::UserRole + 1; // of the model in Qt's sidebar
constexpr int widest = 320; // of the sidebar, in pixels

/** Writes the room left behind a medium's name. */
class RoomDelegate : public QStyledItemDelegate
{
    Q_DECLARE_TR_FUNCTIONS(MediaSidebar)

public:
    RoomDelegate(const QVector<MountedMedium> &media, QObject *parent)
        : QStyledItemDelegate(parent)
    {
        for (const MountedMedium &medium : media)
            m_texts.insert(
                QUrl::fromLocalFile(medium.root),
                tr("%1, %2 liberi")
                    .arg(medium.name,
                         QLocale().formattedDataSize(medium.free, 1, QLocale::DataSizeSIFormat)));
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QString text = m_texts.value(index.data(urlRole).toUrl());
        if (!text.isEmpty())
            option->text = text;
    }

private:
    QHash<QUrl, QString> m_texts;
};

} // namespace

MediaSidebar::MediaSidebar(QFileDialog &dialog)
    : m_dialog(dialog)
    , m_before(dialog.sidebarUrls())
{
    const QVector<MountedMedium> media = MountedMedia::list();
    if (media.isEmpty())
        return;
    QList<QUrl> urls = m_before;
    for (const MountedMedium &medium : media) {
        const QUrl url = QUrl::fromLocalFile(medium.root);
        if (!urls.contains(url))
            urls += url;
    }
    dialog.setSidebarUrls(urls);
    if (auto *view = dialog.findChild<QListView *>(QStringLiteral("sidebar"))) {
        view->setItemDelegate(new RoomDelegate(media, view));
        view->setMinimumWidth(qMin(widest,
                                   view->sizeHintForColumn(0)
                                       + view->style()->pixelMetric(QStyle::PM_ScrollBarExtent)));
    }
}

MediaSidebar::~MediaSidebar()
{
    m_dialog.setSidebarUrls(m_before);
}

} // namespace tarvel4
