// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CardPanels.h"

#include "attachments/forms/DocumentListPanel.h"
#include "attachments/forms/DocumentPanel.h"
#include "attachments/forms/ImagesPanel.h"
#include "attachments/forms/MediaPanel.h"
#include "attachments/forms/RelationsPanel.h"
#include "attachments/forms/WebPanel.h"
#include "items/forms/RecordingsPanel.h"
#include "recordings/forms/RecContentsPanel.h"
#include "recordings/forms/WorksPanel.h"

namespace tessaranth {

namespace {

template<typename Panel>
CardPanel* make(const CardContext& context, QWidget* parent) {
    return new Panel(context, parent);
}

struct Factory {
    const char* name;
    CardPanel* (*make)(const CardContext& context, QWidget* parent);
};
const Factory factories[] = {
    {"Images", make<ImagesPanel>}, {"Doc", make<DocumentPanel>},   {"Docs", make<DocumentListPanel>},
    {"Comp", make<WorksPanel>},    {"Rec", make<RecordingsPanel>}, {"RecContents", make<RecContentsPanel>},
    {"Media", make<MediaPanel>},   {"Web", make<WebPanel>},        {"Rel", make<RelationsPanel>}};

} // namespace

CardPanel* makeCardPanel(const QString& name, const CardContext& context, QWidget* parent) {
    for (const Factory& factory : factories)
        if (name == QLatin1String(factory.name))
            return factory.make(context, parent);
    return nullptr;
}

} // namespace tessaranth
