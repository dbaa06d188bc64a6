#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

class CueStore;

/// Holds the current cue and recalls cues: by number, the next, the previous. Says when the current cue
/// becomes another, so that the menu can follow.
class CueStepper : public QObject {
    Q_OBJECT

public:
    explicit CueStepper(CueStore& cues) : cues_(cues) {}

    /// Nothing when no cue is current.
    const std::optional<QString>& currCue() const { return currCue_; }
    void setCurrCue(const std::optional<QString>& number);

    /// Sets every control to what the cue says, over the cue's times; those it does not name to their
    /// defaults at once. An entry that is no list of records changes nothing.
    static void executeCue(const QVariant& entry);

    /// Makes the cue current and, unless Option is held, executes it.
    void choose(const QString& number);
    /// The cue after the current one, round the end to the first; the first when none is current. A
    /// current cue that is not in the list has none after it and none before it.
    void next();
    void previous();

    /// Records the controls into the current cue.
    void storeCue();
    /// Brings all controls to their defaults; no cue is current afterwards.
    void clear();
    /// Takes all fade times away, levels and running fades stay; no cue is current afterwards.
    void clearTiming();
    /// Removes the current cue from the list; false when none is current.
    bool deleteCue();

signals:
    void currCueChanged();

private:
    void chooseIfAny(const std::optional<QString>& number);

    CueStore& cues_;
    std::optional<QString> currCue_;
};
