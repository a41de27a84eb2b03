// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaranth {

class ElidedLabel;
class IconStore;
struct CardColours;

/// The coloured band at the head of a card: icon, name, years or the like, the kind at the far end, and below
/// the name a line for a subtitle.
class CardBand final : public QWidget {
    Q_OBJECT

public:
    CardBand(const IconStore& icons, const QString& iconKey, QWidget* parent = nullptr);
    void setColours(const CardColours& colours);
    void show(const QString& name, const QString& behind, const QString& below, const QString& kind);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QWidget* m_icon;
    ElidedLabel* m_name;
    ElidedLabel* m_behind;
    ElidedLabel* m_below;
    ElidedLabel* m_kind;
};

} // namespace tessaranth
