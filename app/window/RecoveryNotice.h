#pragma once

#include <QFrame>

/// The line that says that the last run ended without saving and that its show was taken up, with the way
/// back to the saved rig. Takes itself off once the operator has decided.
class RecoveryNotice : public QFrame {
    Q_OBJECT

public:
    explicit RecoveryNotice(QWidget* parent);

signals:
    void savedRigChosen();

private:
    void goBack();
};
