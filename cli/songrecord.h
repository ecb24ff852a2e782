#pragma once

#include "cli/record.h"
#include "songs/songinfo.h"
#include "storage/outcome.h"

namespace tarvel4 {

/** The error of a file that is no song. */
constexpr char unknownFile[] = "Unknown/corrupted file";

/** The keys of a song's record, in their order. */
const QByteArrayList &songKeys();

/** Adds a song's data, from "name" to "mfxFlags". */
void addSong(Record &record, const QString &path, const SongInfo &info);

/** Adds the section markers of a song. */
void addMarkers(Record &record, const QVector<Marker> &markers);

/** Fills the record of a song that can be read. */
Record songRecord(Record record, const QString &path, const SongInfo &info);

/** Adds what a failure is called: "error", "code" and "field"; \a error in place of the sentence
 * where it is given. */
void addFailure(Record &record, const Outcome &cause, const QString &error = {});

/** Fills the record of a path that something went wrong with. */
Record errorRecord(Record record, const QString &path, const Outcome &cause,
                   const QString &error = {});

} // namespace tarvel4
