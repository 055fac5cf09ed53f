#pragma once

// Records each sound played as its file name, with ":wait" when the caller
// waited for it.

#include "ui/sound/sounds.h"

#include <QFileInfo>
#include <QStringList>

struct SoundLog : tavrix::SoundPlayer {
    QStringList played;
    void playSound(const QString &file, bool wait) override
    {
        played.append(QFileInfo(file).fileName() + (wait ? QStringLiteral(":wait") : QString()));
    }
};
