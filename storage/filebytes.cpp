#include "storage/filebytes.h"

#include <QFileDevice>

#include <new>

namespace tarvel4 {

bool FileBytes::grow(QByteArray &bytes, qint64 size)
{
    if (size > maxSize)
        return false;
    try {
        bytes.resize(int(size));
    } catch (const std::bad_alloc &) {
        return false;
    }
    return true;
}

bool FileBytes::readUpTo(QFileDevice &file, qint64 size, QByteArray &bytes)
{
    const int begun = bytes.size();
    return size <= begun
        || (grow(bytes, size) && file.read(bytes.data() + begun, size - begun) == size - begun);
}

bool FileBytes::readAll(QFileDevice &file, QByteArray &bytes)
{
    return readUpTo(file, file.size(), bytes);
}

} // namespace tarvel4
