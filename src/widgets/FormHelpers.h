// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

class QAbstractItemView;
class QDialog;
class QLabel;
class QLineEdit;
class QMimeData;
class QPushButton;
class QSplitter;
class QTreeView;
class QVBoxLayout;
class QWidget;

namespace tessaranth {

class Arrangements;
class IconStore;
class ItemListModel;
class Messages;

/// Pieces that all forms are built of, so that they look alike.
namespace FormHelpers {

/// The head of a form: its icon, a large heading and a line of hint below it. Leading blanks are kept.
QWidget* head(const IconStore& icons, const QString& iconKey, const QString& heading, const QString& hint);
/// A line of explanation below a field, in a quieter colour than the texts around it.
QLabel* quietLabel(const QString& text);
/// A name as the caption of a tab, button or menu entry: its "&" is none of a mnemonic.
QString plainCaption(QString name);
/// What an empty area says, as far as it finds room there: all of it, its first line, or nothing. `margin` is
/// left free on every side.
QString fittingText(const QString& text, const QWidget* area, int margin);
/// The files on this machine that a drag or the clipboard holds; `data` may be null.
QStringList filesOf(const QMimeData* data);
/// A line edit that takes at most so many characters (0: no limit), named for tests and screen readers.
QLineEdit* lineEdit(QWidget* parent, const QString& objectName, const QString& accessibleName, int maxLength);
/// Shows what is stored, whole: a text that is longer than the field takes would be cut and count as changed.
void showStored(QLineEdit* edit, const QString& text);
/// Paints a field yellow while what it holds is refused.
void markRefused(QLineEdit* edit, bool refused);
/// A list of items: whole rows, one line each, sortable by its headings.
QTreeView* itemView(QWidget* parent, const QString& objectName, ItemListModel* model, bool several);
/// A list of items with the text that narrows it. The form reads the list when the text changes, and puts
/// both into its layout.
struct NarrowedList {
    QLineEdit* text = nullptr;
    ItemListModel* model = nullptr;
    QTreeView* view = nullptr;
};
/// Object names and accessible names of both, and what the empty text field shows.
struct NarrowedNames {
    QString text, textName, placeholder;
    QString view, viewName;
};
NarrowedList narrowedList(QWidget* form, const IconStore& icons, const NarrowedNames& names, bool several);
/// Ids of the selected rows in the order in which they are shown.
std::vector<qint64> selectedIds(const QTreeView* view, const ItemListModel* model);
/// Lets the keys that move in a list (arrows, Page up, Page down) do so while the text that narrows it keeps
/// the focus.
void moveInList(QLineEdit* text, QTreeView* view);
/// Columns as wide as what they show, within reason.
void fitColumns(QTreeView* view);
/// Divides an area as the user divided it the last time, and remembers how it is divided from now on. Called
/// after the parts were put in and given the sizes that they have at first.
void keepSplitter(QSplitter* splitter, Arrangements& arrangements, const QString& name);
/// A command on the rows of a list in three ways: the button that is returned, a key within the list (may be
/// empty), and the list's context menu.
QPushButton* commandButton(QAbstractItemView* view, const QString& caption, const QString& objectName,
                           const QString& key, const std::function<void()>& run);
/// The last row of a form: the default button with the action's name, and Cancel, which rejects the form. The
/// caller connects the first, which is returned.
QPushButton* buttonRow(QDialog* form, QVBoxLayout* layout, const QString& action, const QString& objectName);

/// What became of changes that were not saved yet.
enum class Unsaved { Saved, Dropped, Kept };
/// Asks whether to save them and does so on Yes. `Kept`: Cancel, or the saving was refused; the form stays.
Unsaved settleUnsaved(Messages& messages, const QString& title, const QString& question,
                      const std::function<bool()>& save);
/// What `reject` of a form with fields does: closes it, accepted when its changes were saved on the way.
void closeForm(QDialog* form, Messages& messages, bool isChanged, const std::function<bool()>& save);

} // namespace FormHelpers

} // namespace tessaranth
