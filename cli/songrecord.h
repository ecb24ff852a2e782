#pragma once

#include "cli/record.h"
#include "songs/songinfo.h"

#include <QJsonArray>

/** The error of a file that is no song. */
constexpr char unknownFile[] = "Unknown/corrupted file";

/** Adds a song's data, from "name" to "mfxFlags". */
void addSong(Record &record, const QString &path, const SongInfo &info);

/** Markers as a record's value and as people read them. */
QJsonArray markerArray(const QVector<Marker> &markers);
QString markerText(const QVector<Marker> &markers);

/** The record of a song that can be read. */
Record songRecord(const QString &path, const SongInfo &info);

/** The record of one that something went wrong with. */
Record errorRecord(const QString &path, const char *error);
