#include "window/RecoveryNotice.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

RecoveryNotice::RecoveryNotice(QWidget* parent) : QFrame(parent) {
    setFrameShape(QFrame::StyledPanel);
    auto* const rows = new QVBoxLayout(this);
    auto* const text = new QLabel("The last run ended without saving. Its levels, cues and patch are back.");
    text->setWordWrap(true);
    rows->addWidget(text);
    auto* const buttons = new QDialogButtonBox;
    connect(buttons->addButton("&Keep Them", QDialogButtonBox::AcceptRole), &QPushButton::clicked, this,
            &RecoveryNotice::deleteLater);
    connect(buttons->addButton("Go &Back to Saved Rig", QDialogButtonBox::RejectRole), &QPushButton::clicked,
            this, &RecoveryNotice::goBack);
    rows->addWidget(buttons);
}

void RecoveryNotice::goBack() {
    deleteLater();
    emit savedRigChosen();
}
