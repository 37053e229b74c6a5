#pragma once

#include "core/editor/LrcDraft.h"

#include <QObject>
#include <QUndoStack>

// The editing model behind the lyric editor: a draft, the selected line and an undo stack.
// Every change goes through the stack, so undo and redo cover stamps, shifts and text edits.
class LyricEditorModel : public QObject {
    Q_OBJECT
public:
    explicit LyricEditorModel(QObject* parent = nullptr);

    void load(const QString& text); // a fresh draft: the undo history is cleared
    const LrcDraft& draft() const { return m_draft; }
    QUndoStack& undoStack() { return m_undo; }
    int selected() const { return m_selected; }
    void select(int row);

    // Gives the selected line this time and selects the next line.
    void tap(qint64 ms);
    // Selects the line before and clears its time.
    void stepBack();
    void shift(qint64 deltaMs);
    void setLineText(int row, const QString& text);
    void setLineTime(int row, std::optional<qint64> ms);
    // Replaces the whole draft by an edited LRC text (one undo step).
    void setText(const QString& text);

    // Applied by the undo commands; not for callers.
    void apply(const LrcDraft& draft, int selected);

Q_SIGNALS:
    void draftChanged();
    void selectionChanged(int row);

private:
    void change(const QString& what, LrcDraft after, int selectedAfter);

    LrcDraft m_draft;
    int m_selected = 0;
    QUndoStack m_undo;
};
