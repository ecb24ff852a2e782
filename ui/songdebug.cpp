#include "ui/songdebug.h"

#include "songs/metasong.h"

#include <QDebug>

namespace tarvel4 {

namespace {

void saveTo(const QString &target, MetaSong &song)
{
    qDebug() << "Saving to file: " << target;
    if (song.saveToFile(target))
        qDebug() << "Ok";
    else
        qDebug() << "Error!";
}

} // namespace

void SongDebug::save(const QString &path, int row)
{
    qDebug() << "[MainWindow] Saving row: " << row;
    MetaSong song;
    if (song.importFile(path))
        saveTo(QStringLiteral("test_save.bin"), song);
}

void SongDebug::addMarker(const QString &path, int row, const QString &text, quint16 bar)
{
    qDebug() << "[MainWindow] Adding marker to row: " << row;
    MetaSong song;
    if (!song.importFile(path))
        return;
    song.addMarker(text, bar);
    saveTo(QStringLiteral("test_addmarker.bin"), song);
}

} // namespace tarvel4
