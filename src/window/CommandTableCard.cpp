// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CommandTable.h"

namespace tessaranth {

namespace {

// The windows carry these out themselves, so a row has no more than its place, its words and its keys.
Command sub(const char* key, const char* menu, const char* caption, const char* tip, const char* icon = "") {
    return {key, menu, caption, tip, icon, "", When::Menu};
}

Command own(const char* key, const char* menu, const char* caption, const char* tip, const char* icon,
            const char* shortcut = "", const char* button = "") {
    return {key,   menu, caption, tip, icon, shortcut, When::Target, nullptr, *button ? Bar::Card : Bar::None,
            button};
}

Command line(const char* menu) { return {"", menu, "", "", "", "", When::Always}; }

} // namespace

// clang-format off
std::vector<Command> cardCommands() {
    return {
    own("mnuCardEdit", "mnuCard", "&Edit...", "Edit the item of the current card", "Edit", "Ctrl+E"),
    own("mnuCardClassify", "mnuCard", "Classif&y...", "Classify the item of the current card", "Class"),
    line("mnuCard"),
    sub("mnuCardImages", "mnuCard", "&Images", "Manage current card images", "Images"),
    own("mnuCardImagesBack", "mnuCardImages", "Pre&vious image", "Show previous image", "Back1", "Alt+Left", "Back1"),
    own("mnuCardImagesForward", "mnuCardImages", "&Next image", "Show next image", "Forward1", "Alt+Right", "Forward1"),
    line("mnuCardImages"),
    sub("mnuCardImagesAdd", "mnuCardImages", "&Add", "Add a new image to the card", "Add"),
    own("mnuCardImagesAddFile", "mnuCardImagesAdd", "From &file...", "Add new image to current card from image file", "Import"),
    own("mnuCardImagesAddClip", "mnuCardImagesAdd", "From &clipboard", "Add new image to current card from clipboard", "Paste"),
    own("mnuCardImagesRename", "mnuCardImages", "&Rename...", "Rename current image", "Rename"),
    own("mnuCardImagesRemove", "mnuCardImages", "Re&move...", "Permanently remove current image", "Remove"),
    sub("mnuCardImagesReplace", "mnuCardImages", "Re&place", "Replace current image with a new image", "Replace"),
    own("mnuCardImagesReplaceFile", "mnuCardImagesReplace", "From &file...", "Replace current image with a new image from file", "Import"),
    own("mnuCardImagesReplaceClip", "mnuCardImagesReplace", "From &clipboard", "Replace current image with a new image from clipboard", "Paste"),
    line("mnuCardImages"),
    own("mnuCardImagesAll", "mnuCardImages", "&Load all", "Load all images of current card", "Images"),
    own("mnuCardImagesSort", "mnuCardImages", "&Sort...", "Sort current card images", "Sort"),
    own("mnuCardImagesExport", "mnuCardImages", "&Export...", "Export current image to file", "Export"),
    own("mnuCardImagesCopy", "mnuCardImages", "&Copy", "Copy to clipboard", "Copy"),

    sub("mnuCardDoc", "mnuCard", "&Documents", "Manage current card documents", "Doc"),
    own("mnuCardDocBack", "mnuCardDoc", "Pre&vious document", "Show previous document", "Back2", "Alt+Shift+Left", "Back2"),
    own("mnuCardDocForward", "mnuCardDoc", "&Next document", "Show next document", "Forward2", "Alt+Shift+Right", "Forward2"),
    line("mnuCardDoc"),
    own("mnuCardDocAdd", "mnuCardDoc", "&Add...", "Add new document to current card", "Add"),
    own("mnuCardDocEdit", "mnuCardDoc", "&Edit...", "Edit current document", "Edit"),
    own("mnuCardDocRename", "mnuCardDoc", "&Rename...", "Rename current document", "Rename"),
    own("mnuCardDocRemove", "mnuCardDoc", "Re&move...", "Permanently remove current document", "Remove"),
    line("mnuCardDoc"),
    own("mnuCardDocList", "mnuCardDoc", "&List", "List all documents", "Table"),
    own("mnuCardDocSort", "mnuCardDoc", "&Sort...", "Sort current card documents", "Sort"),
    own("mnuCardDocReport", "mnuCardDoc", "Re&port", "Make a report of current card document(s)", "Report"),
    own("mnuCardDocExport", "mnuCardDoc", "E&xport...", "Export current document to rich text file", "Export"),
    own("mnuCardDocCopy", "mnuCardDoc", "&Copy", "Copy selected text to clipboard", "Copy"),

    sub("mnuCardMedia", "mnuCard", "&Media files", "Manage current card media files", "Media"),
    sub("mnuCardMediaAdd", "mnuCardMedia", "&Add", "Add new media to the card", "Add"),
    own("mnuCardMediaAddFind", "mnuCardMediaAdd", "From &file...", "Load new media from file", "Import"),
    own("mnuCardMediaAddPaste", "mnuCardMediaAdd", "From &clipboard", "Paste new media from clipboard", "Paste"),
    own("mnuCardMediaUpdate", "mnuCardMedia", "&Update path...", "Update selected media path", "UpdateMedia"),
    own("mnuCardMediaRename", "mnuCardMedia", "&Rename...", "Change selected media title", "Rename"),
    own("mnuCardMediaRemove", "mnuCardMedia", "Re&move...", "Remove selected media", "Remove"),
    line("mnuCardMedia"),
    own("mnuCardMediaOpen", "mnuCardMedia", "&Open", "Open selected media file with his associate program", "Open"),
    own("mnuCardMediaRefresh", "mnuCardMedia", "Re&fresh", "Refresh the list", "Refresh"),
    own("mnuCardMediaReport", "mnuCardMedia", "Repor&t", "Make a report of current card media files", "Report"),
    own("mnuCardMediaExplore", "mnuCardMedia", "&Explore folder", "Explore file location folder", "Explore"),
    own("mnuCardMediaProperties", "mnuCardMedia", "&Properties...", "Show media file properties", "Info"),

    sub("mnuCardWeb", "mnuCard", "We&b links", "Manage current card web links", "Web"),
    own("mnuCardWebAdd", "mnuCardWeb", "&Add...", "Add new web link", "Add"),
    own("mnuCardWebEdit", "mnuCardWeb", "&Edit...", "Edit selected web link", "Edit"),
    own("mnuCardWebRemove", "mnuCardWeb", "&Remove...", "Remove selected web link from database", "Remove"),
    line("mnuCardWeb"),
    own("mnuCardWebOpen", "mnuCardWeb", "&Go to page", "Go to web page", "Open"),
    own("mnuCardWebReport", "mnuCardWeb", "Re&port", "Make a report of web links", "Report"),

    sub("mnuCardRec", "mnuCard", "&Recordings", "Manage the recordings of the current card", "Recordings"),
    own("mnuCardRecGoto", "mnuCardRec", "&Go to card", "Open selected recording card", "GoToCard"),
    own("mnuCardRecRefresh", "mnuCardRec", "&Refresh", "Refresh recording list", "Refresh"),
    own("mnuCardRecReport", "mnuCardRec", "Re&port", "Make a report of current card recordings", "Report"),

    sub("mnuCardComp", "mnuCard", "&Works", "Manage the works of the current composer", "Comp"),
    own("mnuCardCompManageAdd", "mnuCardComp", "&Add...", "Add new work to current composer", "Add"),
    own("mnuCardCompManageEdit", "mnuCardComp", "&Edit...", "Edit selected work", "Edit"),
    own("mnuCardCompManageRemove", "mnuCardComp", "&Remove...", "Remove current work from database", "Remove"),
    line("mnuCardComp"),
    own("mnuCardCompManageOnRec", "mnuCardComp", "&On recordings...", "List all recordings containing this work", "Recordings"),
    own("mnuCardCompManageCatalog", "mnuCardComp", "&Catalog...", "Manage composer catalog", "Catalog"),
    own("mnuCardCompManageRefresh", "mnuCardComp", "Re&fresh", "Refresh list", "Refresh"),
    own("mnuCardCompManageReport", "mnuCardComp", "Re&port", "Make a report of works", "Report"),
    own("mnuCardCompManageMassiveChanges", "mnuCardComp", "&Mass changes...", "Change many works at once", "Replace"),

    sub("mnuCardRecContents", "mnuCard", "Recording &contents", "Manage the contents of the current recording", "RecContents"),
    own("mnuCardRecContentsRefresh", "mnuCardRecContents", "&Refresh", "Refresh current recording specifications", "Refresh"),
    own("mnuCardRecContentsManage", "mnuCardRecContents", "&Manage...", "Manage works on recording", "Manage"),
    own("mnuCardRecContentsGoTo", "mnuCardRecContents", "&Go to card", "Open selected artist card", "GoToCard"),
    own("mnuCardRecContentsReport", "mnuCardRecContents", "Re&port", "Make a report of recording specifications", "Report"),

    sub("mnuCardRel", "mnuCard", "Re&lationships", "Manage the relationships of the current card", "Relations"),
    own("mnuCardRelManage", "mnuCardRel", "&Manage...", "Manage current card relationships", "Manage"),
    own("mnuCardRelGoTo", "mnuCardRel", "&Go to card", "Open selected item card", "GoToCard"),
    own("mnuCardRelReport", "mnuCardRel", "Re&port", "Make a report of relationships", "Report"),

    sub("mnuCardWorkCard", "mnuCard", "Wor&k card", "Manage the current work card", "Comp"),
    own("mnuCardWorkCardEdit", "mnuCardWorkCard", "&Edit...", "Edit the work", "Edit"),
    own("mnuCardWorkCardExport", "mnuCardWorkCard", "E&xport...", "Export current work card to rich text file", "Export"),
    own("mnuCardWorkCardGoto", "mnuCardWorkCard", "&Go to card", "Go to selected recording card", "GoToCard"),
    };
}
// clang-format on

} // namespace tessaranth
