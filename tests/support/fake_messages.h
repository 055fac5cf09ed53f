#pragma once

// Answers questions from a queue (Yes when it is empty) and records every
// message, so tests run without a person.

#include "ui/dialogs/messages.h"

#include <QList>
#include <QStringList>

struct FakeMessages : tavrix::Messages {
    struct Shown {
        QString kind;
        QString title;
        QString text;
    };
    QList<Shown> shown;
    QList<bool> answers;

    void notice(QWidget *, const QString &title, const QString &text) override
    {
        shown.append({QStringLiteral("notice"), title, text});
    }
    bool askYesNo(QWidget *, const QString &title, const QString &text) override
    {
        shown.append({QStringLiteral("question"), title, text});
        return answers.isEmpty() ? true : answers.takeFirst();
    }
    void error(QWidget *, const QString &title, const QString &text) override
    {
        shown.append({QStringLiteral("error"), title, text});
    }
    void alert(const QString &message, const QString &title) override
    {
        shown.append({QStringLiteral("alert"), title, message});
    }
    QStringList titles() const
    {
        QStringList list;
        for (const Shown &s : shown)
            list.append(s.title);
        return list;
    }
    // The texts shown, of one kind ("notice", "error", ...) or of every kind.
    QStringList texts(const QString &kind = {}) const
    {
        QStringList list;
        for (const Shown &s : shown)
            if (kind.isEmpty() || s.kind == kind)
                list.append(s.text);
        return list;
    }
};
