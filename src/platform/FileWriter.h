// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <memory>

class QDateTime;
class QIODevice;

namespace tessaranth {

/// What becomes of a file that stands where one is to be written.
enum class Existing { Replace, Refuse };

/// The one way to write a file: whole or not at all. What is written goes into a temporary file beside the
/// target; `commit` brings it to the disk and gives it the target's name. Until then, and on every failure, a
/// file that stood there stays as it was. A link is followed, so that a file kept elsewhere stays there; what
/// is no file (a folder, a device, a pipe) is refused. Every function throws FileError with the name of the
/// file and the system's reason.
class FileWriter {
public:
    explicit FileWriter(const QString& path, Existing existing = Existing::Replace);
    ~FileWriter(); ///< without `commit` the temporary file goes
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    /// For writers of XML or pictures; a failure shows there or, at the latest, in `commit`.
    QIODevice& device();
    void write(QByteArrayView bytes);
    void setTime(const QDateTime& modified); ///< kept by the finished file
    /// For a library that opens the file by its name; the file is empty so far. Nothing may be written
    /// through `device` then, and the library must have closed it before `commit`.
    QString temporaryPath() const;
    void commit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

void writeFile(const QString& path, QByteArrayView bytes, Existing existing = Existing::Replace);
/// The copy has the time of the original.
void copyFile(const QString& from, const QString& to, Existing existing);
/// Nothing that stands at the target is replaced; between disks the file is copied and then removed.
void moveFile(const QString& from, const QString& to);

/// Removes what writers that were killed left in a folder: only files by the names that FileWriter gives, and
/// none that a running program is still writing.
void removeLeftovers(const QString& folder);

} // namespace tessaranth
