// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/TrackInput.h"

#include "store/Fields.h"
#include "widgets/FormHelpers.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace tessaranth {

namespace {

QString asTyped(QString length) { return length.replace(u':', u'.'); }

QLabel* caption(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

TrackInput::TrackInput(int longestName) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    m_name = FormHelpers::lineEdit(this, QStringLiteral("txtTrack"), tr("Name of the track"), longestName);
    m_length = FormHelpers::lineEdit(this, QStringLiteral("meb"), tr("Length, minutes and seconds"), 0);
    m_length->setPlaceholderText(QStringLiteral("__.__"));
    m_length->setToolTip(tr("Minutes and seconds, two digits each: 04.30, 04:30 or 0430"));
    constexpr int lengthWidth = 72;
    m_length->setFixedWidth(lengthWidth);
    m_hint = new QLabel;
    m_hint->setObjectName(QStringLiteral("trackHint"));
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setAlignment(Qt::AlignRight);
    m_hint->setMinimumHeight(m_hint->fontMetrics().height()); // nothing moves when it comes
    grid->addWidget(caption(tr("Na&me:"), m_name), 0, 0);
    grid->addWidget(m_name, 0, 1);
    grid->addWidget(caption(tr("&Length:"), m_length), 0, 2);
    grid->addWidget(m_length, 0, 3);
    grid->addWidget(m_hint, 1, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    for (QLineEdit* edit : {m_name, m_length}) {
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textChanged, this, [this] {
            withdraw();
            emit edited();
        });
    }
    connect(m_length, &QLineEdit::editingFinished, this, [this] {
        if (!length())
            tellFaults();
    });
}

void TrackInput::show(const Track& track) {
    m_shown = track;
    m_name->setText(track.name);
    m_shownName = m_name->text();
    m_length->setText(asTyped(track.length));
    withdraw();
}

void TrackInput::clear() { show({}); }

bool TrackInput::isTyped() const {
    return name() != m_shown.name || m_length->text() != asTyped(m_shown.length);
}

QString TrackInput::name() const {
    return m_name->text() == m_shownName ? m_shown.name : m_name->text().trimmed();
}

// A length from elsewhere, such as "4:30", is none that could be typed, but stays as long as nobody changes
// it.
std::optional<QString> TrackInput::length() const {
    const QString text = m_length->text().trimmed();
    return text == asTyped(m_shown.length) ? m_shown.length : trackLength(text);
}

bool TrackInput::isFit() const { return !name().isEmpty() && length(); }

std::optional<Track> TrackInput::take() {
    if (isFit())
        return Track{name(), *length()};
    tellFaults();
    QLineEdit* fault = length() ? m_name : m_length;
    fault->setFocus();
    fault->selectAll();
    return std::nullopt;
}

void TrackInput::tellFaults() {
    const bool badLength = !length();
    const bool noName = name().isEmpty() && isTyped();
    FormHelpers::markRefused(m_length, badLength);
    FormHelpers::markRefused(m_name, noName && !badLength);
    if (badLength)
        m_hint->setText(
            tr("\"%1\" is no length: two digits for the minutes and two for the seconds, up to 59, "
               "such as 04.30")
                .arg(m_length->text()));
    else
        m_hint->setText(noName ? tr("A track has a name.") : QString());
}

void TrackInput::withdraw() {
    if (length())
        FormHelpers::markRefused(m_length, false);
    if (!name().isEmpty() || !isTyped())
        FormHelpers::markRefused(m_name, false);
    if (m_length->styleSheet().isEmpty() && m_name->styleSheet().isEmpty())
        m_hint->clear();
}

bool TrackInput::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        emit entered(key->modifiers() & Qt::ControlModifier);
        return true;
    }
    if (watched == m_name && key->matches(QKeySequence::Paste) &&
        QApplication::clipboard()->text().trimmed().contains(u'\n')) {
        emit linesPasted();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tessaranth
