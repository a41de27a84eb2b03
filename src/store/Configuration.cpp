// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Configuration.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tessaranth {

namespace {

/// What a row of the tables writes.
enum class Initial { Text, AppFolder, DatabasePath };

struct Row {
    const char* section;
    const char* key;
    const char* value; ///< for AppFolder what follows the folder and a separator
    Initial initial = Initial::Text;
};

struct ColourRow {
    const char* key;
    const char* value;
};

constexpr const char* factoryColours = "DefColors";
constexpr const char* colours = "Colors";

/// Both colour sections, the factory's and the one in use.
constexpr ColourRow colourRows[] = {
    {"MdiBack", "8421504"}, {"CpsBC", "2237106"},  {"PfrBC", "6824719"},  {"RecBC", "25600"},
    {"CusBC", "9109643"},   {"CpsFC", "65535"},    {"PfrFC", "65535"},    {"RecFC", "8454143"},
    {"CusFC", "65535"},     {"CpsLC", "65535"},    {"PfrLC", "8454143"},  {"RecLC", "16777215"},
    {"CusLC", "16777215"},  {"CpsHC", "6824719"},  {"PfrHC", "128"},      {"RecHC", "128"},
    {"CusHC", "6824719"},   {"WksFC", "16744448"}, {"WkcFC", "16777215"}, {"WkcBC", "32896"},
};

/// Every other setting of a new file, in the order in which it is written.
constexpr Row rows[] = {
    {"Reports", "BackgroundColor", "16766975"},
    {"Reports", "BackgroundImage", ""},
    {"Reports", "HeaderFontSize", "14"},
    {"Reports", "TextFontSize", "10"},
    {"Reports", "TextFontColor", "4194432"},
    {"Reports", "OutputDir", "Tessaranth_Html", Initial::AppFolder},
    {"Reports", "Signature", "1"},
    {"Reports", "TextFontType", "Verdana"},
    {"Proxy settings", "Enabled", "0"},
    {"Proxy settings", "Address", ""},
    {"Proxy settings", "Port", ""},
    {"Proxy settings", "Username", ""},
    {"Proxy settings", "Password", ""},
    {"Data folders", "Images", "Tessaranth_Images", Initial::AppFolder},
    {"Data folders", "Documents", "Tessaranth_Docs", Initial::AppFolder},
    {"Data folders", "Labels", "Tessaranth_Labels", Initial::AppFolder},
    {"Data folders", "Media", "Tessaranth_Media", Initial::AppFolder},
    {"Data folders", "Database", "", Initial::DatabasePath},
    {"Maintenance", "Compact", "1"},
    {"Maintenance", "Backup", "1"},
    {"Maintenance", "CopyDb", "0"},
    {"Maintenance", "DestFolder", ""},
    {"Misc", "FreeDB", "gnudb.gnudb.org"},
    {"Misc", "Menu", "0"},
    {"Misc", "Version", "1"},
    {"Misc", "WKey", "1"},
    {"Misc", "WorkInBold", "1"},
    {"Toolbox", "Visible", "-1"},
    {"Toolbox", "Position", "-1"},
    {"Toolbox", "Width", "3800"},
    {"Runtime", "ClassCps", "1"},
    {"Runtime", "ClassPfr", "1"},
    {"Runtime", "ClassRec", "1"},
    {"Runtime", "ClassCus", "1"},
    {"Runtime", "ShowCps", "1"},
    {"Runtime", "ShowPfr", "1"},
    {"Runtime", "ShowRec", "1"},
    {"Runtime", "ShowCus", "1"},
    {"Runtime", "HtmlColor1", "0"},
    {"Runtime", "HtmlColor2", "1"},
    {"Web", "SearchHost", "www.google.com"},
    {"Web", "ImageHost", "images.google.com"},
    {"Web", "StoreHost", "www.amazon.com"},
    {"Web", "StoreTag", ""},
    {"Web", "Site", ""},
};

/// What files of older versions lack. A destination folder that is there is kept: only its switch is new.
constexpr Row addedRows[] = {
    {"Reports", "Signature", "1"},
    {"Reports", "TextFontType", "Verdana"},
    {"Misc", "WKey", "1"},
    {"Misc", "WorkInBold", "1"},
    {colours, "WkcFC", "16777215"},
    {factoryColours, "WkcFC", "16777215"},
    {colours, "WkcBC", "32896"},
    {factoryColours, "WkcBC", "32896"},
    {"Maintenance", "CopyDb", "0"},
    {"Data folders", "Database", "Tessaranth.tsb", Initial::AppFolder},
    {"Web", "SearchHost", "www.google.com"},
    {"Web", "ImageHost", "images.google.com"},
    {"Web", "StoreHost", "www.amazon.com"},
};

/// The key of section Runtime for each kind of file dialog. "Catalog" has no prefix because the files that
/// users have carry it so.
constexpr struct {
    const char* kind;
    const char* key;
} folderKeys[] = {
    {"Image", "LastDirImages"},
    {"Doc", "LastDirDocs"},
    {"Label", "LastDirLabels"},
    {"Media", "LastDirMedia"},
    {"List", "LastDirList"},
    {"BackImage", "BackImageDir"},
    {"Catalog", "Catalog"},
    {"Pers", "LastDirPers"},
    {"TextCleanup", "LastDirTextCleanup"},
    {"TempImport", "LastDirTempImport"},
    {"ImageEx", "LastDirImageEx"},
    {"WkRep", "LastDirWkRep"},
    {"DocEx", "LastDirDocEx"},
};

QString latin(const char* text) { return QString::fromLatin1(text); }

/// Empty for a kind that no dialog has.
QString folderKey(const QString& kind) {
    for (const auto& row : folderKeys) {
        if (kind == QLatin1String(row.kind))
            return latin(row.key);
    }
    return {};
}

QColor colourOf(const QString& text) {
    bool isNumber = false;
    const uint value = text.toUInt(&isNumber);
    if (!isNumber || value > 0xffffff)
        return {};
    return QColor(int(value & 0xff), int(value >> 8 & 0xff), int(value >> 16));
}

QString textOf(const Row& row, const QString& applicationFolder, const QString& databasePath) {
    switch (row.initial) {
    case Initial::AppFolder:
        return QDir::toNativeSeparators(applicationFolder + u'/' + latin(row.value));
    case Initial::DatabasePath:
        return QDir::toNativeSeparators(databasePath);
    default:
        return latin(row.value);
    }
}

} // namespace

Configuration::Configuration(const QString& file, const QString& applicationFolder)
    : m_file(file), m_applicationFolder(applicationFolder) {}

std::vector<Configuration::Setting> Configuration::defaults(const QString& databasePath) const {
    std::vector<Setting> settings;
    for (const char* section : {factoryColours, colours}) {
        for (const ColourRow& row : colourRows)
            settings.push_back({latin(section), latin(row.key), latin(row.value)});
    }
    for (const Row& row : rows)
        settings.push_back(
            {latin(row.section), latin(row.key), textOf(row, m_applicationFolder, databasePath)});
    return settings;
}

bool Configuration::create(const QString& databasePath) {
    std::vector<ProfileFile::Entry> entries;
    for (const Setting& setting : defaults(databasePath))
        entries.push_back({setting.section, setting.key, setting.initial});
    return m_file.create(entries);
}

void Configuration::addMissingKeys() {
    std::vector<ProfileFile::Entry> missing;
    for (const Row& row : addedRows) {
        if (read(latin(row.section), latin(row.key)).isEmpty())
            missing.push_back(
                {latin(row.section), latin(row.key), textOf(row, m_applicationFolder, QString())});
    }
    const auto isSwitch = [](const ProfileFile::Entry& entry) { return entry.key == u"CopyDb"; };
    const QString section = QStringLiteral("Maintenance");
    const QString folder = QStringLiteral("DestFolder");
    if (std::any_of(missing.begin(), missing.end(), isSwitch) && read(section, folder).isEmpty())
        missing.push_back({section, folder, QString()});
    if (!missing.empty())
        m_file.write(missing);
}

bool Configuration::flag(const QString& section, const QString& key) const {
    const QString value = read(section, key);
    return value == u"1" || value == u"-1";
}

int Configuration::number(const QString& section, const QString& key, int fallback) const {
    bool isNumber = false;
    const int value = read(section, key).toInt(&isNumber);
    return isNumber ? value : fallback;
}

QColor Configuration::colour(const QString& key) const {
    const QColor ofLook = schemeColour(look(), key);
    return ofLook.isValid() ? ofLook : classicColour(key);
}

QColor Configuration::classicColour(const QString& key) const {
    const QColor chosen = colourOf(read(latin(colours), key));
    return chosen.isValid() ? chosen : factoryColour(key);
}

QColor Configuration::factoryColour(const QString& key) const {
    if (const QColor stored = colourOf(read(latin(factoryColours), key)); stored.isValid())
        return stored;
    for (const ColourRow& row : colourRows) {
        if (key.compare(QLatin1String(row.key), Qt::CaseInsensitive) == 0)
            return colourOf(latin(row.value));
    }
    return QColor(Qt::black);
}

bool Configuration::setColour(const QString& key, const QColor& colour) {
    return write(latin(colours), key,
                 QString::number(colour.blue() << 16 | colour.green() << 8 | colour.red()));
}

QString Configuration::lastFolder(const QString& kind) const {
    const QString key = folderKey(kind);
    return key.isEmpty() ? QString() : read(QStringLiteral("Runtime"), key);
}

void Configuration::setLastFolder(const QString& kind, const QString& fileName) {
    const QString key = folderKey(kind);
    const qsizetype cut = std::max(fileName.lastIndexOf(u'\\'), fileName.lastIndexOf(u'/'));
    if (key.isEmpty() || cut < 0)
        return;
    // A root is nothing without its separator.
    const bool isRoot = cut == 0 || fileName[cut - 1] == u':';
    const QString folder = fileName.left(isRoot ? cut + 1 : cut);
    if (QFileInfo(folder).isDir())
        write(QStringLiteral("Runtime"), key, QDir::toNativeSeparators(folder));
}

} // namespace tessaranth
