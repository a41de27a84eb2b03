// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/WorkDescription.h"

#include "store/Guarded.h"

namespace tessaranth {

namespace {

const QString titleOfAll = QStringLiteral("Descr");

} // namespace

qint64 WorkDescription::document() {
    return m_session.connection()
        .single(QStringLiteral("SELECT CardID FROM Cards WHERE RelatedID = %1 AND RelatedCat = 'Comp' AND "
                               "CardTitle = '%2' ORDER BY OrderNbr")
                    .arg(m_work)
                    .arg(titleOfAll))
        .toInteger();
}

std::optional<QByteArray> WorkDescription::read() {
    const qint64 id = document();
    return id == 0 ? std::nullopt : m_documents.read(id);
}

bool WorkDescription::write(const QByteArray& rtf) {
    return guarded(m_session, [&] {
        const qint64 id = document();
        return id == 0 ? m_documents.add(rtf, titleOfAll) != 0 : m_documents.rewrite(id, rtf);
    });
}

bool WorkDescription::remove() {
    qint64 id = 0;
    if (!guarded(m_session, [&] { id = document(); }) || id == 0)
        return false;
    Question question;
    question.title = QStringLiteral("Remove description");
    question.text = QStringLiteral("Do you want to remove this description?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes && m_documents.remove(id);
}

} // namespace tessaranth
