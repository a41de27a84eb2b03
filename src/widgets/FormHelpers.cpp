// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FormHelpers.h"

#include "platform/Messages.h"
#include "store/Arrangements.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

namespace tessaranth::FormHelpers {

namespace {

/// Hands the keys that mean nothing to a line of text on to a list.
class ListKeys final : public QObject {
public:
    ListKeys(QLineEdit* text, QTreeView* view) : QObject(text), m_view(view) {
        text->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QCoreApplication::sendEvent(m_view, event);
            return true;
        default:
            return QObject::eventFilter(watched, event);
        }
    }

private:
    QTreeView* m_view;
};

/// A list's key and context menu entry that press a button, and are possible while the button is.
class ButtonAction final : public QAction {
public:
    ButtonAction(QPushButton* button, const QString& key) : QAction(button->text(), button) {
        setShortcut(QKeySequence(key));
        setShortcutContext(Qt::WidgetShortcut);
        connect(this, &QAction::triggered, button, &QPushButton::click);
        button->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange)
            setEnabled(static_cast<QPushButton*>(watched)->isEnabled());
        return QAction::eventFilter(watched, event);
    }
};

} // namespace

QWidget* head(const IconStore& icons, const QString& iconKey, const QString& heading, const QString& hint) {
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 6);
    row->setSpacing(12);
    auto* icon = new QLabel;
    icon->setPixmap(icons.pixmap(iconKey, QSize(32, 32)));
    row->addWidget(icon, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    auto* title = new QLabel(heading);
    title->setTextFormat(Qt::PlainText);
    title->setObjectName(QStringLiteral("heading"));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.35);
    font.setBold(true);
    title->setFont(font);
    texts->addWidget(title);
    if (!hint.isEmpty()) {
        auto* line = new QLabel(hint);
        line->setTextFormat(Qt::PlainText);
        line->setWordWrap(true);
        line->setObjectName(QStringLiteral("hint"));
        texts->addWidget(line);
    }
    row->addLayout(texts, 1);
    return widget;
}

QLabel* quietLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QString plainCaption(QString name) { return name.replace(u'&', QStringLiteral("&&")); }

QString fittingText(const QString& text, const QWidget* area, int margin) {
    const QRect room = area->rect().adjusted(margin, margin, -margin, -margin);
    for (const QString& shown : {text, text.section(u'\n', 0, 0)})
        if (area->fontMetrics().boundingRect(room, Qt::TextWordWrap, shown).height() <= room.height())
            return shown;
    return {};
}

QStringList filesOf(const QMimeData* data) {
    QStringList files;
    if (data)
        for (const QUrl& url : data->urls())
            if (url.isLocalFile())
                files.push_back(url.toLocalFile());
    return files;
}

QLineEdit* lineEdit(QWidget* parent, const QString& objectName, const QString& accessibleName,
                    int maxLength) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(objectName);
    edit->setAccessibleName(accessibleName);
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    return edit;
}

void showStored(QLineEdit* edit, const QString& text) {
    edit->setMaxLength(qMax(edit->maxLength(), int(text.size())));
    edit->setText(text);
}

void markRefused(QLineEdit* edit, bool refused) {
    edit->setStyleSheet(refused ? QStringLiteral("background: rgb(255, 255, 0); color: black") : QString());
}

QTreeView* itemView(QWidget* parent, const QString& objectName, ItemListModel* model, bool several) {
    auto* view = new QTreeView(parent);
    view->setObjectName(objectName);
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->setSelectionMode(several ? QAbstractItemView::ExtendedSelection
                                   : QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->header()->setSortIndicatorClearable(true);
    view->header()->setSortIndicator(-1, Qt::AscendingOrder);
    view->setSortingEnabled(true);
    return view;
}

NarrowedList narrowedList(QWidget* form, const IconStore& icons, const NarrowedNames& names, bool several) {
    constexpr int longestName = 250;
    NarrowedList list;
    list.text = lineEdit(form, names.text, names.textName, longestName);
    list.text->setPlaceholderText(names.placeholder);
    list.text->setClearButtonEnabled(true);
    list.model = new ItemListModel(icons, form);
    list.view = itemView(form, names.view, list.model, several);
    list.view->setAccessibleName(names.viewName);
    moveInList(list.text, list.view);
    return list;
}

std::vector<qint64> selectedIds(const QTreeView* view, const ItemListModel* model) {
    QModelIndexList rows = view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<qint64> ids;
    for (const QModelIndex& row : rows)
        ids.push_back(model->id(row));
    return ids;
}

void moveInList(QLineEdit* text, QTreeView* view) { new ListKeys(text, view); }

void fitColumns(QTreeView* view) {
    constexpr int widest = 420;
    // The rows that are measured: all of a list that is read at a glance, a sample of one that is not.
    view->header()->setResizeContentsPrecision(150);
    for (int column = 0; column + 1 < view->model()->columnCount(); ++column) {
        view->resizeColumnToContents(column);
        view->setColumnWidth(column, qMin(view->columnWidth(column) + 12, widest));
    }
}

QPushButton* commandButton(QAbstractItemView* view, const QString& caption, const QString& objectName,
                           const QString& key, const std::function<void()>& run) {
    auto* button = new QPushButton(caption);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    view->addAction(new ButtonAction(button, key));
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    QObject::connect(button, &QPushButton::clicked, button, run);
    return button;
}

QPushButton* buttonRow(QDialog* form, QVBoxLayout* layout, const QString& action, const QString& objectName) {
    auto* box = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* button = box->addButton(action, QDialogButtonBox::ActionRole);
    button->setObjectName(objectName);
    QObject::connect(box, &QDialogButtonBox::rejected, form, &QDialog::reject);
    layout->addWidget(box);
    // Only within the form does a button become its default; the box would otherwise choose Cancel.
    box->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    button->setDefault(true);
    return button;
}

void keepSplitter(QSplitter* splitter, Arrangements& arrangements, const QString& name) {
    const QList<int> sizes = arrangements.read(Arrangements::splitters, name);
    if (sizes.size() == splitter->count())
        splitter->setSizes(sizes);
    QObject::connect(splitter, &QSplitter::splitterMoved, splitter, [splitter, name, &arrangements] {
        arrangements.keep(Arrangements::splitters, name, splitter->sizes());
    });
}

Unsaved settleUnsaved(Messages& messages, const QString& title, const QString& question,
                      const std::function<bool()>& save) {
    const Answer answer =
        messages.ask({title, question, {Answer::Yes, Answer::No, Answer::Cancel}, Answer::Yes});
    if (answer == Answer::No)
        return Unsaved::Dropped;
    return answer == Answer::Yes && save() ? Unsaved::Saved : Unsaved::Kept;
}

void closeForm(QDialog* form, Messages& messages, bool isChanged, const std::function<bool()>& save) {
    const Unsaved changes = isChanged
                                ? settleUnsaved(messages, form->windowTitle().trimmed(),
                                                QStringLiteral("Do you want to save the changes?"), save)
                                : Unsaved::Dropped;
    if (changes != Unsaved::Kept)
        form->done(changes == Unsaved::Saved ? QDialog::Accepted : QDialog::Rejected);
}

} // namespace tessaranth::FormHelpers
