// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace tessaranth {

class Session;

/// What becomes of a label's logo when the label is saved.
struct LogoChange {
    enum class What { Keep, Replace, Remove };
    What what = What::Keep;
    QByteArray bytes; ///< the new picture, as it was imported
};

/// A record label: its name, and its logo in the labels folder.
class LabelEditor {
public:
    explicit LabelEditor(Session& session) : m_session(session) {}

    /// Adds a label (id 0, which gets the new key) or changes one. Name and logo are saved together or not
    /// at all; a refusal has been told to the user.
    bool save(qint64& id, const QString& name, const LogoChange& logo);
    /// The logo's file, or nothing when there is none. Throws FileError for one that cannot be read.
    QByteArray logo(qint64 id) const;
    // A picture for a logo, from a file as it stands or from the clipboard. Empty, with a message, when it
    // cannot be read or is no picture.
    QByteArray importLogo(const QString& file);
    QByteArray pastedLogo(const QImage& image);

    /// A picture as large as it is, but no larger than `box` pixels; null for what is no picture.
    static QImage decoded(const QByteArray& bytes, const QSize& box);

private:
    Session& m_session;
};

} // namespace tessaranth
