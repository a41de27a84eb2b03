// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/SettingsTable.h"

#include "platform/Errors.h"
#include "platform/FileWriter.h"
#include "store/ColourScheme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tessaranth {

namespace {

using Type = SettingRow::Type;

QString tr(const char* text) { return QCoreApplication::translate("Settings", text); }

std::vector<SettingRow> makeRows() {
    const QString look = tr("Look");
    const QString folders = tr("Folders");
    const QString reports = tr("Reports");
    const QString proxy = tr("Proxy");
    const QString care = tr("Maintenance");
    const QString web = tr("Web");
    const QString toolbox = tr("Toolbox");
    const QString data = "Data folders";
    return {
        {look,
         tr("&Colours of the program:"),
         "Misc",
         "Look",
         Type::Choice,
         0,
         0,
         lookWords(),
         {tr("Classic, as set on the page Colours"), tr("Light"), tr("Dark")},
         tr("Takes effect at once.")},
        {look, tr("Works of the collection in &bold"), "Misc", "WorkInBold", Type::Flag, 0, 0, {}, {}, {}},
        {look, tr("Show the &key of a work"), "Misc", "WKey", Type::Flag, 0, 0, {}, {}, {}},
        {folders, tr("&Pictures:"), data, "Images", Type::Folder, 0, 0, {}, {}, {}},
        {folders, tr("&Documents:"), data, "Documents", Type::Folder, 0, 0, {}, {}, {}},
        {folders, tr("&Label logos:"), data, "Labels", Type::Folder, 0, 0, {}, {}, {}},
        {folders, tr("&Media files:"), data, "Media", Type::Folder, 0, 0, {}, {}, {}},
        {folders, tr("&Reports and web site:"), "Reports", "OutputDir", Type::Folder, 0, 0, {}, {}, {}},
        {folders,
         tr("C&atalog:"),
         data,
         "Database",
         Type::File,
         0,
         0,
         {},
         {},
         tr("Another catalog is opened at the next start.")},
        {reports, tr("&Page colour:"), "Reports", "BackgroundColor", Type::Colour, 0, 0, {}, {}, {}},
        {reports, tr("Page p&icture:"), "Reports", "BackgroundImage", Type::File, 0, 0, {}, {}, {}},
        {reports, tr("&Text colour:"), "Reports", "TextFontColor", Type::Colour, 0, 0, {}, {}, {}},
        {reports, tr("&Font:"), "Reports", "TextFontType", Type::Text, 0, 0, {}, {}, {}},
        {reports, tr("Size of &headings:"), "Reports", "HeaderFontSize", Type::Number, 6, 72, {}, {}, {}},
        {reports, tr("&Size of text:"), "Reports", "TextFontSize", Type::Number, 6, 72, {}, {}, {}},
        {reports, tr("Title of the &web site:"), "Reports", "MainPageTitle", Type::Text, 0, 0, {}, {}, {}},
        {reports,
         tr("Name the progra&m at the foot of a page"),
         "Reports",
         "Signature",
         Type::Flag,
         0,
         0,
         {},
         {},
         {}},
        {proxy, tr("&Use a proxy for the web"), "Proxy settings", "Enabled", Type::Flag, 0, 0, {}, {}, {}},
        {proxy, tr("&Address:"), "Proxy settings", "Address", Type::Text, 0, 0, {}, {}, {}},
        {proxy, tr("&Port:"), "Proxy settings", "Port", Type::Number, 1, 65535, {}, {}, {}},
        {proxy, tr("User &name:"), "Proxy settings", "Username", Type::Text, 0, 0, {}, {}, {}},
        {proxy,
         tr("Pass&word:"),
         "Proxy settings",
         "Password",
         Type::Password,
         0,
         0,
         {},
         {},
         tr("The password is stored as plain text.")},
        {care, tr("&Compact the catalog at exit"), "Maintenance", "Compact", Type::Flag, 0, 0, {}, {}, {}},
        {care,
         tr("&Back up the catalog at exit"),
         "Maintenance",
         "Backup",
         Type::Flag,
         0,
         0,
         {},
         {},
         tr("Tessaranth.bak beside the program; the one before it is replaced.")},
        {care, tr("C&opy the catalog at exit"), "Maintenance", "CopyDb", Type::Flag, 0, 0, {}, {}, {}},
        {care,
         tr("&To the folder:"),
         "Maintenance",
         "DestFolder",
         Type::Folder,
         0,
         0,
         {},
         {},
         tr("Choose a folder on another disk.")},
        {web, tr("&freedb server:"), "Misc", "FreeDB", Type::Text, 0, 0, {}, {}, {}},
        {web, tr("&Search engine:"), "Web", "SearchHost", Type::Text, 0, 0, {}, {}, {}},
        {web, tr("&Image search:"), "Web", "ImageHost", Type::Text, 0, 0, {}, {}, {}},
        {web, tr("S&tore:"), "Web", "StoreHost", Type::Text, 0, 0, {}, {}, {}},
        {web, tr("&Partner tag of the store:"), "Web", "StoreTag", Type::Text, 0, 0, {}, {}, {}},
        {web, tr("&Web site of Tessaranth:"), "Web", "Site", Type::Text, 0, 0, {}, {}, {}},
        {toolbox, tr("&Show the toolbox"), "Toolbox", "Visible", Type::Flag, 0, 0, {}, {}, {}}};
}

bool mayBeEmpty(const SettingRow& row) {
    return row.section != u"Data folders" && row.key != u"OutputDir" && row.key != u"FreeDB";
}

} // namespace

const std::vector<SettingRow>& settingRows() {
    static const std::vector<SettingRow> rows = makeRows();
    return rows;
}

QString settingOr(const SettingRow& row, const QString& stored) {
    switch (row.type) {
    case Type::Flag:
        return stored == u"1" || stored == u"-1" ? QStringLiteral("1") : QStringLiteral("0");
    case Type::Choice:
        return row.choices.contains(stored) ? stored : row.choices.front();
    default:
        return stored;
    }
}

QString settingFault(const SettingRow& row, const QString& value) {
    constexpr int longest = 255; // what is read back from the file
    const QString caption = QString(row.caption).remove(u'&').remove(u':');
    if (value.size() > longest)
        return tr("%1: at most %2 characters can be stored.").arg(caption).arg(longest);
    if (value.isEmpty())
        return mayBeEmpty(row) ? QString() : tr("%1: this cannot be left empty.").arg(caption);
    const QFileInfo info(value);
    switch (row.type) {
    case Type::Number: {
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        return isNumber && number >= row.least && number <= row.most
                   ? QString()
                   : tr("%1: a whole number from %2 to %3 is needed.")
                         .arg(caption)
                         .arg(row.least)
                         .arg(row.most);
    }
    case Type::Folder:
        return info.isAbsolute() && (info.isDir() || !info.exists())
                   ? QString()
                   : tr("%1: \"%2\" is not the full path of a folder.").arg(caption, value);
    case Type::File:
        if (!info.isFile())
            return tr("%1: there is no file \"%2\".").arg(caption, value);
        return row.key == u"Database" && info.fileName() != u"Tessaranth.tsb"
                   ? tr("%1: the file must have the name Tessaranth.tsb.").arg(caption)
                   : QString();
    default:
        return {};
    }
}

int moveDataFiles(const QString& from, const QString& to, QString& reason) {
    QStringList moved;
    try {
        for (const QString& name : QDir(from).entryList(QDir::Files | QDir::Hidden)) {
            moveFile(from + u'/' + name, to + u'/' + name);
            moved.push_back(name);
        }
        return int(moved.size());
    } catch (const FileError& error) {
        reason = error.reason();
    }
    for (const QString& done : std::as_const(moved))
        QFile::rename(to + u'/' + done, from + u'/' + done);
    return -1;
}

} // namespace tessaranth
