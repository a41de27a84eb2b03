// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class Session;

/// One recording with the names of what it refers to, for the command line and for reports. Read only; Null
/// shows as an empty text.
class CREC {
public:
    explicit CREC(Session& session) : m_session(session) {}

    /// "Carica dati": reads a recording. False when there is none, and after a failure, which is told;
    /// everything is empty then.
    bool CaricaDati(qint64 recId);

    qint64 RecId = 0;
    QString Title;
    QString ProdNbr;
    QString Rating;
    QString Notes;
    QString SupportType;
    QString SupportIcon; ///< key of the carrier's icon
    QString SourceType;
    QString LabelName;
    QString LabelFile; ///< full path of the label's logo, which need not exist; empty without a label

private:
    Session& m_session;
};

} // namespace tessaranth
