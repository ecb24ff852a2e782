#pragma once

#include <QString>

#include <memory>

namespace tarvel4 {

/** A card or a stick that the system can let go of. */
class RemovableDrive
{
public:
    struct Ejection
    {
        enum class Result {
            Ejected,
            Unmounted, ///< nothing uses it any more, but the reader kept it
            Failed,
        };

        Result result = Result::Failed;
        QString cause; ///< translated, or the system's own words; empty for Ejected
    };

    virtual ~RemovableDrive() = default;

    /** Returns when the system has answered, which may take as long as the card writes. */
    virtual Ejection eject() = 0;
};

/** The drives of this machine. */
class RemovableDrives
{
public:
    virtual ~RemovableDrives() = default;

    /** The one that holds a folder; null where that is no such drive, or the system can't tell. */
    virtual std::unique_ptr<RemovableDrive> driveOf(const QString &folder) = 0;

    /** Null where the program was built without the system's interface. */
    static std::unique_ptr<RemovableDrives> ofSystem();
};

} // namespace tarvel4
