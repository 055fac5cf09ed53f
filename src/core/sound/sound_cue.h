#pragma once

// The sound effects by name, and the small interface that plays them. The
// rules say which cue fits an event; the player decides how it sounds.

namespace tavrix {

enum class SoundCue {
    Splat,       // a dart lands
    Boing,       // a bounce-out
    Harp,        // a double
    Fanfare,     // a treble
    Applause60,
    Applause100,
    Applause140,
    ApplauseWin,
    Awwww,       // a bust
};

class SoundOut {
public:
    virtual ~SoundOut() = default;
    // With `wait` the call returns when the sound has ended.
    virtual void play(SoundCue cue, bool wait) = 0;
};

} // namespace tavrix
