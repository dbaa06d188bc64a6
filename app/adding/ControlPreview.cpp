#include "adding/ControlPreview.h"

#include "patch/Patch.h"
#include "rig/ShownText.h"

#include <QHeaderView>

namespace {

constexpr int narrowColumn = 72;

// A key begins with the fixture's name and a point.
QString controlName(const PatchedControl& control, const PatchedFixture& fixture) {
    return control.dummy ? QString("(unused)") : shownName(control.key.mid(fixture.name.size() + 1));
}

} // namespace

ControlPreview::ControlPreview() {
    setHeaderLabels({"Control", "Channels", "First slot"});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(NoSelection);
    setAccessibleName("Controls");
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->resizeSection(1, narrowColumn);
    header()->resizeSection(2, narrowColumn);
}

void ControlPreview::showControls(const PatchedFixture& fixture) {
    clear();
    QList<QTreeWidgetItem*> items;
    for (const PatchedControl& control : fixture.controls) {
        if (control.channels > 0) {
            items.append(
                new QTreeWidgetItem({controlName(control, fixture), QString::number(control.channels),
                                     QString::number(control.slot + 1)})); // the list owns it
        }
    }
    addTopLevelItems(items);
}
