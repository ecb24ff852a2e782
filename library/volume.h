#pragma once

#include <QString>

namespace tarvel4 {

/** What the transfer must know about the volume that holds a path. */
class Volume
{
public:
    virtual ~Volume() = default;

    /** The root of the volume: the drive where there are drive letters, else the mount point that
     * holds \a path. */
    virtual QString rootOf(const QString &path) const = 0;
    virtual bool isRootFolder(const QString &path) const = 0;
    /** True for the disk that the system runs from. */
    virtual bool isSystemDisk(const QString &path) const = 0;
};

/** The volumes of this machine. */
class SystemVolume : public Volume
{
public:
    QString rootOf(const QString &path) const override;
    bool isRootFolder(const QString &path) const override;
    bool isSystemDisk(const QString &path) const override;
};

/** The rules where a path begins with the letter of its drive, for whole and clean paths
 * ("E:/songs"); the same on every system, so that every system's tests hold them. */
class DriveVolume : public Volume
{
public:
    QString rootOf(const QString &path) const override;
    bool isRootFolder(const QString &path) const override;
    bool isSystemDisk(const QString &path) const override;
};

/** A folder taken for the root of a memory: a mounted image, or a folder that is copied to a card
 * later. */
class FolderVolume : public Volume
{
public:
    explicit FolderVolume(const QString &root);

    QString rootOf(const QString &path) const override;
    bool isRootFolder(const QString &path) const override;
    bool isSystemDisk(const QString &path) const override;

private:
    QString m_root;
};

} // namespace tarvel4
