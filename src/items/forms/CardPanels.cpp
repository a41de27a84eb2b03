// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/CardPanels.h"

#include "items/forms/DocumentListPanel.h"
#include "items/forms/DocumentPanel.h"
#include "items/forms/ImagesPanel.h"
#include "items/forms/MediaPanel.h"
#include "items/forms/RecContentsPanel.h"
#include "items/forms/RecordingsPanel.h"
#include "items/forms/RelationsPanel.h"
#include "items/forms/WebPanel.h"
#include "items/forms/WorksPanel.h"

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
