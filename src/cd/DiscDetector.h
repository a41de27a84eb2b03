// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace tessaranth {

class OpenCards;
class Radar;
class Session;

/// Reads what identifies a music disc.
class DiscReader {
public:
    virtual ~DiscReader() = default;
    /// The identifier of the disc whose volume has this name; empty when it cannot be read.
    virtual QString discId(const QString& volumeName) = 0;
};

/// Opens the card of the recording whose disc is put into a drive, while the radar is enabled. Everything
/// that it is given outlives it.
class DiscDetector final : public QObject {
    Q_OBJECT

public:
    DiscDetector(Session& session, Radar& radar, DiscReader& reader, OpenCards& cards,
                 QObject* parent = nullptr);

signals:
    /// A disc was read that no recording has.
    void unknownDisc(const QString& discId);

private:
    void identify(const QString& volumeName);

    Session& m_session;
    DiscReader& m_reader;
    OpenCards& m_cards;
};

} // namespace tessaranth
