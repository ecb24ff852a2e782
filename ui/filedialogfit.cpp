#include "ui/filedialogfit.h"

#include <QDateTime>
#include <QFileDialog>
#include <QHeaderView>
#include <QListView>
#include <QLocale>
#include <QMimeDatabase>
#include <QScreen>
#include <QTreeView>

#include <algorithm>

namespace tarvel4 {

namespace {

enum FileColumn { Name, Size, Type, Date };

/** What the dialog calls a song's type: Qt 6 by the name of its MIME type, Qt 5 by its ending. */
QString typeOf(const QString &fileName)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMimeDatabase().mimeTypeForFile(fileName, QMimeDatabase::MatchExtension).comment();
#else
    return fileName.section(QLatin1Char('.'), -1) + QLatin1String(" File");
#endif
}

/** Longer than most texts of a column. */
QString sampleOf(int column)
{
    switch (column) {
    case Size:
        return QLocale().formattedDataSize(888 * 1024);
    case Type:
        return std::max(
            {typeOf(QStringLiteral("a.mid")), typeOf(QStringLiteral("a.mp3")),
             typeOf(QStringLiteral("a.mf4"))},
            [](const QString &one, const QString &other) { return one.size() < other.size(); });
    default:
        return QLocale().toString(QDateTime(QDate(2028, 12, 28), QTime(8, 8)),
                                  QLocale::ShortFormat);
    }
}

} // namespace

void fitFileDialog(QFileDialog &dialog)
{
    const QSize room = dialog.screen()->availableSize();
    auto *files = dialog.findChild<QTreeView *>(QStringLiteral("treeView"));
    if (!files)
        return;
    constexpr int padding = 12; // beside a text, by the style sheet
    QHeaderView *header = files->header();
    header->ensurePolished();
    files->ensurePolished();
    for (const int column : {Size, Type, Date}) {
        const int text = files->fontMetrics().horizontalAdvance(sampleOf(column)) + padding;
        header->resizeSection(
            column, std::max({header->sectionSize(column), text, header->sectionSizeHint(column)}));
    }
    const auto *places = dialog.findChild<QListView *>(QStringLiteral("sidebar"));
    const int beside = places ? std::max(places->sizeHintForColumn(0), places->minimumWidth()) : 0;
    constexpr int around = 80; // margins, frames and a scroll bar
    const QSize whole(header->length() + beside + around, dialog.sizeHint().height());
    dialog.resize(whole.expandedTo(dialog.sizeHint()).boundedTo(room));
}

} // namespace tarvel4
