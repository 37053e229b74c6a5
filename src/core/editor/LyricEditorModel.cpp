#include "core/editor/LyricEditorModel.h"

#include <QUndoCommand>

#include <algorithm>

namespace {

// A change kept as the drafts before and after: a 500-line lyric is a few kilobytes, and a
// snapshot cannot drift from the draft the way a replayed edit could.
class DraftChange : public QUndoCommand {
public:
    DraftChange(LyricEditorModel& model, const QString& text, LrcDraft before, int selBefore,
                LrcDraft after, int selAfter)
        : QUndoCommand(text)
        , m_model(model)
        , m_before(std::move(before))
        , m_after(std::move(after))
        , m_selBefore(selBefore)
        , m_selAfter(selAfter)
    {
    }
    void undo() override { m_model.apply(m_before, m_selBefore); }
    void redo() override { m_model.apply(m_after, m_selAfter); }

private:
    LyricEditorModel& m_model;
    LrcDraft m_before;
    LrcDraft m_after;
    int m_selBefore;
    int m_selAfter;
};

} // namespace

LyricEditorModel::LyricEditorModel(QObject* parent)
    : QObject(parent)
{
}

void LyricEditorModel::load(const QString& text)
{
    m_undo.clear();
    apply(LrcDraft::fromText(text), 0);
}

void LyricEditorModel::select(int row)
{
    row = std::clamp(row, 0, std::max(0, m_draft.size() - 1));
    if (row == m_selected)
        return;
    m_selected = row;
    Q_EMIT selectionChanged(row);
}

void LyricEditorModel::tap(qint64 ms)
{
    if (m_selected >= m_draft.size())
        return;
    LrcDraft after = m_draft;
    after.setTime(m_selected, ms);
    change(tr("Tap"), std::move(after), std::min(m_selected + 1, m_draft.size() - 1));
}

void LyricEditorModel::stepBack()
{
    if (m_draft.isEmpty())
        return;
    const int row = std::max(0, m_selected - 1);
    LrcDraft after = m_draft;
    after.setTime(row, std::nullopt);
    change(tr("Step Back"), std::move(after), row);
}

void LyricEditorModel::shift(qint64 deltaMs)
{
    LrcDraft after = m_draft;
    after.shift(deltaMs);
    change(tr("Shift"), std::move(after), m_selected);
}

void LyricEditorModel::setLineText(int row, const QString& text)
{
    LrcDraft after = m_draft;
    after.setText(row, text);
    change(tr("Edit Line"), std::move(after), m_selected);
}

void LyricEditorModel::setLineTime(int row, std::optional<qint64> ms)
{
    LrcDraft after = m_draft;
    after.setTime(row, ms);
    change(tr("Edit Time"), std::move(after), m_selected);
}

void LyricEditorModel::setText(const QString& text)
{
    LrcDraft after = LrcDraft::fromText(text);
    const int row = std::min(m_selected, std::max(0, after.size() - 1));
    change(tr("Edit Text"), std::move(after), row);
}

void LyricEditorModel::change(const QString& what, LrcDraft after, int selectedAfter)
{
    if (after == m_draft && selectedAfter == m_selected)
        return;
    m_undo.push(new DraftChange(*this, what, m_draft, m_selected, std::move(after), selectedAfter));
}

void LyricEditorModel::apply(const LrcDraft& draft, int selected)
{
    const bool changed = !(draft == m_draft);
    m_draft = draft;
    if (changed)
        Q_EMIT draftChanged();
    const int before = m_selected;
    m_selected = std::clamp(selected, 0, std::max(0, m_draft.size() - 1));
    if (changed || before != m_selected)
        Q_EMIT selectionChanged(m_selected);
}
