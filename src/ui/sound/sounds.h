#pragma once

// The sound effects: nine named sounds played one at a time through a small
// player interface, which tests replace to hear what played and how.

#include "core/sound/sound_cue.h"

#include <QString>

#include <memory>

class QSoundEffect;

namespace tavrix {

class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    // Plays the wave file (a full path). With `wait` the call returns when
    // the sound has ended; otherwise at once while it plays on.
    virtual void playSound(const QString &file, bool wait) = 0;
};

// Plays through Qt Multimedia. A new sound cuts off the one before. While a
// caller waits, user input is held back; a missing file or audio device
// never stops the program, and no wait outlasts the file's length by much.
class QtSoundPlayer : public SoundPlayer {
public:
    QtSoundPlayer();
    ~QtSoundPlayer() override;
    void playSound(const QString &file, bool wait) override;

private:
    std::unique_ptr<QSoundEffect> effect_;
};

class Sounds : public SoundOut {
public:
    Sounds(SoundPlayer &player, QString folder);

    // The program's sound folder (beside it in the build folder, or
    // installed under share/tavrix), or "" when there is none: then nothing
    // plays.
    static QString defaultFolder();

    // Turned off, nothing plays.
    void setEnabled(bool enabled) { enabled_ = enabled; }
    bool isEnabled() const { return enabled_; }

    void playDefaultSound(bool wait);
    void playBoing(bool wait);
    void playHarp(bool wait);
    void playFanfare(bool wait);
    void playApplause60(bool wait);
    void playApplause100(bool wait);
    void playApplause140(bool wait);
    void playApplauseWin(bool wait);
    void playAwwww(bool wait);

    // The same sounds by cue.
    void play(SoundCue cue, bool wait) override;

private:
    void play(const char *file, bool wait);

    SoundPlayer &player_;
    QString folder_;
    bool enabled_ = true;
};

// Length of a PCM wave file in milliseconds from its header; 0 when the file
// cannot be read as one.
int waveDurationMs(const QString &file);

} // namespace tavrix
