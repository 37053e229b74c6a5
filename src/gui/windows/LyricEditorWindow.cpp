#include "gui/windows/LyricEditorWindow.h"

#include <QAction>
#include <QBoxLayout>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>

#include <cmath>

LyricEditorWindow::LyricEditorWindow(Host host, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_host(std::move(host))
{
    setWindowTitle(tr("Lyric Editor"));
    resize(640, 720);
    m_song = new QLabel(this);
    m_table = new QTableWidget(0, 2, this);
    m_table->setHorizontalHeaderLabels({tr("Time"), tr("Line")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::SelectedClicked);
    m_table->installEventFilter(this);
    m_text = new QPlainTextEdit(this);
    m_pages = new QStackedWidget(this);
    m_pages->addWidget(m_table);
    m_pages->addWidget(m_text);
    m_status = new QLabel(this);

    auto* tapButton = new QPushButton(tr("Tap"), this);
    auto* backButton = new QPushButton(tr("Step Back"), this);
    auto* shift = new QDoubleSpinBox(this);
    shift->setRange(-60, 60);
    shift->setSingleStep(0.1);
    shift->setDecimals(2);
    shift->setSuffix(tr(" s"));
    auto* shiftButton = new QPushButton(tr("Shift All"), this);
    m_textMode = new QPushButton(tr("Edit as Text"), this);
    m_textMode->setCheckable(true);
    auto* saveButton = new QPushButton(tr("Save"), this);
    auto* publishButton = new QPushButton(tr("Publish..."), this);
    for (QPushButton* button : {tapButton, backButton, shiftButton})
        button->setFocusPolicy(Qt::NoFocus); // Space stays with the table

    auto* tools = new QHBoxLayout;
    tools->addWidget(tapButton);
    tools->addWidget(backButton);
    tools->addSpacing(12);
    tools->addWidget(shift);
    tools->addWidget(shiftButton);
    tools->addStretch();
    tools->addWidget(m_textMode);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(publishButton);
    bottom->addWidget(saveButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_song);
    layout->addLayout(tools);
    layout->addWidget(m_pages, 1);
    layout->addLayout(bottom);

    QAction* undo = m_model.undoStack().createUndoAction(this, tr("Undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = m_model.undoStack().createRedoAction(this, tr("Redo"));
    redo->setShortcut(QKeySequence::Redo);
    auto* saveAction = new QAction(tr("Save"), this);
    saveAction->setShortcut(QKeySequence::Save);
    addActions({undo, redo, saveAction});

    connect(tapButton, &QPushButton::clicked, this, &LyricEditorWindow::tap);
    connect(backButton, &QPushButton::clicked, this, &LyricEditorWindow::stepBack);
    connect(shiftButton, &QPushButton::clicked, this, [this, shift] { shiftBy(shift->value()); });
    connect(m_textMode, &QPushButton::clicked, this, &LyricEditorWindow::toggleTextMode);
    connect(saveButton, &QPushButton::clicked, this, &LyricEditorWindow::saveLyric);
    connect(saveAction, &QAction::triggered, this, &LyricEditorWindow::saveLyric);
    connect(publishButton, &QPushButton::clicked, this, &LyricEditorWindow::publish);
    connect(&m_model, &LyricEditorModel::draftChanged, this, &LyricEditorWindow::rebuild);
    connect(&m_model, &LyricEditorModel::selectionChanged, this, [this](int row) {
        if (!m_rebuilding && row < m_table->rowCount())
            m_table->selectRow(row);
    });
    connect(m_table, &QTableWidget::cellChanged, this, &LyricEditorWindow::cellEdited);
    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (!m_rebuilding && row >= 0)
            m_model.select(row);
    });
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        const auto ms = m_model.draft().line(row).ms;
        if (!ms || !m_host.seek)
            return;
        m_host.seek(double(*ms) / 1000.0, [window = QPointer<LyricEditorWindow>(this)](bool moved) {
            if (window && !moved)
                window->m_status->setText(tr("The player cannot seek."));
        });
    });
}

LyricEditorWindow::~LyricEditorWindow() = default;

void LyricEditorWindow::open(const QString& text, const QString& songTitle)
{
    m_song->setText(songTitle.isEmpty() ? tr("No song is playing.") : songTitle);
    m_status->clear();
    if (m_textMode->isChecked()) {
        m_textMode->setChecked(false);
        m_pages->setCurrentWidget(m_table);
    }
    m_model.load(text);
    rebuild();
    m_table->setFocus();
}

void LyricEditorWindow::rebuild()
{
    m_rebuilding = true;
    const LrcDraft& draft = m_model.draft();
    m_table->setUpdatesEnabled(false);
    m_table->setRowCount(draft.size());
    for (int row = 0; row < draft.size(); ++row) {
        const auto& line = draft.line(row);
        const QString time = LrcDraft::formatTime(line.ms);
        if (auto* item = m_table->item(row, 0))
            item->setText(time);
        else
            m_table->setItem(row, 0, new QTableWidgetItem(time));
        // Word tags are kept in the text (and move with the line) but not shown here.
        const QString words = LrcDraft::withoutWordTags(line.text);
        if (auto* item = m_table->item(row, 1))
            item->setText(words);
        else
            m_table->setItem(row, 1, new QTableWidgetItem(words));
    }
    m_table->setUpdatesEnabled(true);
    m_table->selectRow(m_model.selected());
    m_rebuilding = false;
    m_status->setText(tr("%1 of %2 lines timed").arg(draft.timedCount()).arg(draft.size()));
}

void LyricEditorWindow::cellEdited(int row, int column)
{
    if (m_rebuilding)
        return;
    const QString text = m_table->item(row, column)->text();
    if (column == 1) {
        m_model.setLineText(row, text);
        return;
    }
    const auto ms = LrcDraft::parseTime(text);
    if (ms || text.trimmed().isEmpty())
        m_model.setLineTime(row, ms);
    else
        rebuild(); // not a time: the old one comes back
}

void LyricEditorWindow::toggleTextMode()
{
    if (m_textMode->isChecked()) {
        m_text->setPlainText(m_model.draft().toLrc());
        m_pages->setCurrentWidget(m_text);
        m_text->setFocus();
    } else {
        m_model.setText(m_text->toPlainText());
        m_pages->setCurrentWidget(m_table);
        m_table->setFocus();
    }
}

void LyricEditorWindow::tap()
{
    const double seconds = m_host.playTime ? m_host.playTime() : 0.0;
    m_model.tap(std::llround(std::max(0.0, seconds) * 1000.0));
}

void LyricEditorWindow::stepBack()
{
    m_model.stepBack();
}

void LyricEditorWindow::shiftBy(double seconds)
{
    m_model.shift(std::llround(seconds * 1000.0));
}

bool LyricEditorWindow::saveLyric()
{
    if (m_textMode->isChecked())
        toggleTextMode();
    const auto failed = m_host.save ? m_host.save(m_model.draft().toLrc()) : std::nullopt;
    m_status->setText(failed ? *failed : tr("Saved."));
    return !failed;
}

bool LyricEditorWindow::eventFilter(QObject* watched, QEvent* event)
{
    // A cell being edited has its own editor widget: only the table's own keys come here.
    if (watched == m_table && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space) {
            tap();
            return true;
        }
        if (key == Qt::Key_Backspace) {
            stepBack();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
