// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/OutsideCommands.h"

#include "store/Guarded.h"
#include "store/Session.h"
#include "store/SqlError.h"
#include "window/CardWindows.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("OutsideCommands", text); }

struct ProgramRow {
    Program program;
    const char* caption;
    const char* missing;
};

constexpr ProgramRow programs[] = {
    {Program::Volume, "Volume Control", "No program that sets the volume was found on this system."},
    {Program::TextEditor, "Text editor", "No text editor was found on this system."},
    {Program::RichTextEditor, "Rich text editor", "No word processor was found on this system."},
    {Program::Browser, "Web browser", "No web browser was found on this system."}};

} // namespace

void OutsideCommands::start(Program program) {
    const QStringList candidates = programCandidates(program);
    if (!startFirst(candidates).isEmpty())
        return;
    for (const ProgramRow& row : programs)
        if (row.program == program)
            m_session.messages().warning(tr(row.caption), tr(row.missing) + u'\n' + tr("Looked for: ") +
                                                              candidates.join(QStringLiteral(", ")));
}

void OutsideCommands::open(const QUrl& url) {
    if (!m_session.desktop().openUrl(url))
        m_session.messages().warning(tr("Web browser"),
                                     tr("Nothing on this system opens web pages. The address is:") + u'\n' +
                                         url.toString(QUrl::FullyEncoded));
}

void OutsideCommands::search(WebSearch kind) {
    const ChildWindow* card = m_cards.active();
    if (!card || card->kind() != ChildWindow::Kind::Card)
        return;
    const auto [code, id] = OpenCards::parts(card->key());
    QString name;
    if (!guarded(m_session,
                 [&, &code = code, &id = id] { name = searchName(m_session.connection(), code, id); }))
        return;
    const QUrl url = searchUrl(m_session.configuration(), kind, name);
    if (name.isEmpty())
        m_session.messages().information(applicationTitle, tr("This card has no name to search for."));
    else if (url.isValid())
        open(url);
    else
        m_session.messages().warning(applicationTitle,
                                     tr("The host of this search is not set. Enter it in the program "
                                        "settings, page Web."));
}

void OutsideCommands::openSite() {
    const QString address =
        m_session.configuration().read(QStringLiteral("Web"), QStringLiteral("Site")).trimmed();
    const QUrl url = QUrl::fromUserInput(address);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    if (!address.isEmpty() && isWeb && !url.host().isEmpty())
        open(url);
    else
        m_session.messages().information(applicationTitle,
                                         tr("The address of the web site is not set. Enter it in the program "
                                            "settings, page Web."));
}

} // namespace tessaranth
