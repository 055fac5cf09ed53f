#pragma once

// Answers questions from queues and records every message, so tests run
// without a person. An unanswered Yes/No is Yes; an unanswered choice takes
// the last button; an unanswered file dialog is cancelled.

#include "ui/dialogs/messages.h"

#include <QList>
#include <QStringList>

#include <functional>

struct FakeMessages : tavrix::Messages {
    struct Shown {
        QString kind;
        QString title;
        QString text;
    };
    QList<Shown> shown;
    QList<bool> answers;
    QList<int> choices;
    QStringList savePaths;
    QStringList openPaths;
    // Runs as each choice is asked, before it is answered.
    std::function<void()> whenChoosing;

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
    int choose(QWidget *, const QString &title, const QString &text, const QStringList &buttons,
               int) override
    {
        shown.append({QStringLiteral("choice"), title, text + QStringLiteral(" [") + buttons.join(QLatin1Char('|')) + QLatin1Char(']')});
        if (whenChoosing)
            whenChoosing();
        return choices.isEmpty() ? static_cast<int>(buttons.size()) - 1 : choices.takeFirst();
    }
    QString chooseFileToSave(QWidget *, const QString &title, const QString &suggestedPath, const QString &) override
    {
        shown.append({QStringLiteral("save file"), title, suggestedPath});
        return savePaths.isEmpty() ? QString() : savePaths.takeFirst();
    }
    QString chooseFileToOpen(QWidget *, const QString &title, const QString &folder, const QString &) override
    {
        shown.append({QStringLiteral("open file"), title, folder});
        return openPaths.isEmpty() ? QString() : openPaths.takeFirst();
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
