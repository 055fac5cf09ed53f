#include "ui/sound/sounds.h"

#include "core/session/program_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QAudioDevice>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace tavrix {

namespace {

quint32 littleEndian32(const QByteArray &bytes, int at)
{
    quint32 value = 0;
    for (int i = 3; i >= 0; --i)
        value = (value << 8) | static_cast<quint8>(bytes[at + i]);
    return value;
}

} // namespace

int waveDurationMs(const QString &file)
{
    QFile wave(file);
    if (!wave.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray header = wave.read(44);
    if (header.size() < 44 || !header.startsWith("RIFF") || header.mid(8, 4) != "WAVE")
        return 0;
    const quint32 bytesPerSecond = littleEndian32(header, 28);
    if (bytesPerSecond == 0)
        return 0;
    return static_cast<int>((wave.size() - 44) * 1000 / bytesPerSecond);
}

QtSoundPlayer::QtSoundPlayer() = default;
QtSoundPlayer::~QtSoundPlayer() = default;

void QtSoundPlayer::playSound(const QString &file, bool wait)
{
    if (effect_)
        effect_->stop();
    const int length = waveDurationMs(file);
    // Without a file or a device to play it on there is nothing to wait for.
    if (length <= 0 || QMediaDevices::defaultAudioOutput().isNull())
        return;
    if (!effect_)
        effect_ = std::make_unique<QSoundEffect>();
    effect_->setSource(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()));
    effect_->play();
    if (!wait)
        return;

    // Wait for the end of the sound, for a failure, or at the latest a
    // little after the file's length (a missing audio device may never say).
    QEventLoop loop;
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, &loop, &QEventLoop::quit);
    QSoundEffect *effect = effect_.get();
    bool started = effect->isPlaying();
    QObject::connect(effect, &QSoundEffect::playingChanged, &loop, [&] {
        if (effect->isPlaying())
            started = true;
        else if (started)
            loop.quit();
    });
    QObject::connect(effect, &QSoundEffect::statusChanged, &loop, [&] {
        if (effect->status() == QSoundEffect::Error)
            loop.quit();
    });
    if (effect->status() == QSoundEffect::Error)
        return;
    guard.start(std::min(length + 400, 10000));
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

Sounds::Sounds(SoundPlayer &player, QString folder)
    : player_(player)
    , folder_(std::move(folder))
{
}

QString Sounds::defaultFolder()
{
    return programFilesFolder(ProgramFiles::Sounds);
}

void Sounds::play(const char *file, bool wait)
{
    // Without a sound folder the program runs silently, as it does when one
    // file is missing.
    if (enabled_ && !folder_.isEmpty())
        player_.playSound(folder_ + QLatin1Char('/') + QLatin1String(file), wait);
}

void Sounds::playDefaultSound(bool wait) { play(SoundCue::Splat, wait); }
void Sounds::playBoing(bool wait) { play(SoundCue::Boing, wait); }
void Sounds::playHarp(bool wait) { play(SoundCue::Harp, wait); }
void Sounds::playFanfare(bool wait) { play(SoundCue::Fanfare, wait); }
void Sounds::playApplause60(bool wait) { play(SoundCue::Applause60, wait); }
void Sounds::playApplause100(bool wait) { play(SoundCue::Applause100, wait); }
void Sounds::playApplause140(bool wait) { play(SoundCue::Applause140, wait); }
void Sounds::playApplauseWin(bool wait) { play(SoundCue::ApplauseWin, wait); }
void Sounds::playAwwww(bool wait) { play(SoundCue::Awwww, wait); }

void Sounds::play(SoundCue cue, bool wait)
{
    static constexpr const char *files[] = {"splat.wav",       "boing2.wav",      "harp1.wav",
                                            "fanfare.wav",     "applause60.wav",  "applause100.wav",
                                            "applause140.wav", "applausewin.wav", "awwww.wav"};
    play(files[static_cast<int>(cue)], wait);
}

} // namespace tavrix
