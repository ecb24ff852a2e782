#include "ui/removabledrive.h"

namespace tarvel4 {

std::unique_ptr<RemovableDrives> RemovableDrives::ofSystem()
{
    return nullptr;
}

} // namespace tarvel4
