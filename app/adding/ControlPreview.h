#pragma once

#include <QTreeWidget>

struct PatchedFixture;

/// The controls of a fixture with the slots that they would have.
class ControlPreview : public QTreeWidget {
    Q_OBJECT

public:
    ControlPreview();

    void showControls(const PatchedFixture& fixture);
};
