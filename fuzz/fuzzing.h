#pragma once

#include <QByteArray>
#include <QtDebug>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace tarvel4 {

/** What the fuzz targets share. */
namespace Fuzzing {

/** Drops the log, which would otherwise be most of the work. */
inline void silenceLog()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

inline QByteArray bytes(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size));
}

/** A promise that was broken is a crash, so that libFuzzer keeps the input. */
inline void require(bool kept)
{
    if (!kept)
        std::abort();
}

} // namespace Fuzzing

} // namespace tarvel4
