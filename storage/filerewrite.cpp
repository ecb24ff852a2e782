#include "storage/filerewrite.h"

#include "storage/besiderewrite.h"
#include "storage/inplacerewrite.h"

namespace tarvel4 {

std::unique_ptr<FileRewrite> FileRewrite::make(Disk &disk, const QString &path,
                                               const FileStamp &stamp, const FileChange &change)
{
    if (change.way == FileChange::Way::Beside)
        return std::make_unique<BesideRewrite>(disk, path, stamp, change);
    return std::make_unique<InPlaceRewrite>(disk, path, change);
}

} // namespace tarvel4
