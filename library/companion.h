#pragma once

#include <QString>

namespace tarvel4 {

/** The karaoke graphics that go wherever their MP3 goes: a file of its name that ends in .cdg. */
namespace Companion {

/** The companion of a song's path, in whatever case its suffix stands; empty: none is there. */
QString of(const QString &songPath);

/** What the companion of an MP3 that is copied to \a songDestination is called there. */
QString destinationFor(const QString &songDestination);

/** True for the path of a companion. */
bool isCompanion(const QString &path);

} // namespace Companion

} // namespace tarvel4
