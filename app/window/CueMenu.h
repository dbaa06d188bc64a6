#pragma once

#include <QMenu>
#include <QStringList>

#include <functional>
#include <optional>

/// The menu of the cues: the commands, then one item for each cue. The list changes only when it is set up;
/// check mark and title move in between.
class CueMenu : public QMenu {
    Q_OBJECT

public:
    /// What an item of the menu asks for; the numbers are the items' tags. A cue's own item has tag 0.
    enum Tag {
        ChooseCue = 0,
        NextCue = 1,
        PrevCue = 2,
        StoreCue = 3,
        Clear = 4,
        ClearTiming = 5,
        DeleteCue = 6
    };

    explicit CueMenu(QWidget* parent = nullptr);

    /// Lists `numbers` as they stand, with `currCue` checked.
    void setupCueMenu(const QStringList& numbers, const std::optional<QString>& currCue);
    /// Checks the item of the current cue, unchecks the one before, and names the cue in the menu's title.
    void showCurrCue(const std::optional<QString>& currCue);

signals:
    void cueAction(CueMenu::Tag tag, const QString& title);
    void newCueChosen();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addCommands();
    void listCues(const QStringList& numbers);
    void addCommand(const QString& title, Tag tag, const QKeySequence& keys, const QString& toolTip = {});
    QAction* cueItem(const QString& number);
    QAction* newItem(const QString& title, const QKeySequence& keys, const std::function<void()>& chosen);
    void check(QAction* item);
    QAction* itemWithTitle(const QString& title) const;

    QList<QAction*> cueItems_;
    QAction* checkedItem_ = nullptr;
};
