// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QLockFile;

namespace kalvo {

/// A numbered file that belongs to one running program: beside it lies NAME.lock, which tells the owner. As long as the
/// owner lives nobody else gets the file; once it is gone, however it went, the next one who asks does. No file's time
/// is looked at.
///
/// Letting go of the object gives up the ownership and leaves the file, as the death of the program would.
class OwnedFile
{
public:
    ~OwnedFile();
    OwnedFile(const OwnedFile&) = delete;
    OwnedFile& operator=(const OwnedFile&) = delete;

    /// Claims the first name STEM1.dat, STEM2.dat ... in the folder that is neither owned nor there.
    /// @return null when none can be had, with the reason in `why`.
    static std::unique_ptr<OwnedFile> claimNew(const QString& folder, const QString& stem, QString* why = nullptr);
    /// Claims every STEM*.dat in the folder whose owner is gone, in the order of their names.
    static std::vector<std::unique_ptr<OwnedFile>> claimLeft(const QString& folder, const QString& stem);

    QString path() const { return m_path; }
    std::optional<QByteArray> read(QString* why = nullptr) const;
    /// Replaces the whole text or leaves the former one: never half of it, not even when the power goes.
    bool write(const QByteArray& bytes, QString* why = nullptr);
    /// True when the file is no longer there.
    bool remove(QString* why = nullptr);

private:
    explicit OwnedFile(const QString& path);
    enum class Claim
    {
        Mine,
        Owned,
        Impossible
    };
    Claim claim(QString* why);
    bool tookFromTheDead();

    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace kalvo
