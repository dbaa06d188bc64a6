#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

class CueStore;
class Faders;

/// What choosing a cue does besides making it the current one.
enum class Choosing { Execute, SelectOnly };

/// Holds the current cue and recalls cues: by number, the next, the previous. Says when the current cue
/// becomes another, so that the menu can follow.
class CueStepper : public QObject {
    Q_OBJECT

public:
    /// Both have to outlive the stepper.
    CueStepper(CueStore& cues, Faders& faders) : cues_(cues), faders_(faders) {}

    /// Nothing when no cue is current.
    const std::optional<QString>& currCue() const { return currCue_; }
    void setCurrCue(const std::optional<QString>& number);

    /// Sets every fader to what the cue says, over the cue's times, and those that it does not name to their
    /// defaults at once; all in one tick. An entry that is no list of records changes nothing.
    void executeCue(const QVariant& entry);

    /// Makes the cue current and executes it, unless it is only to be selected.
    void choose(const QString& number, Choosing choosing = Choosing::Execute);
    /// The cue after the current one, round the end to the first; the first when none is current. A
    /// current cue that is not in the list has none after it and none before it.
    void next(Choosing choosing = Choosing::Execute);
    void previous(Choosing choosing = Choosing::Execute);

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
    void chooseIfAny(const std::optional<QString>& number, Choosing choosing);

    CueStore& cues_;
    Faders& faders_;
    std::optional<QString> currCue_;
};
