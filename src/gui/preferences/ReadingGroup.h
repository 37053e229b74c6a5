#pragma once

#include <QGroupBox>

class PLSettingsStore;
class QComboBox;

// The Lyric panel's "Reading" group: what is shown under each line (nothing, its translation,
// its romanisation) and the script Chinese lines are shown in. A choice is saved and applied to
// the open displays at once.
class ReadingGroup : public QGroupBox {
    Q_OBJECT
public:
    ReadingGroup(PLSettingsStore& store, QWidget* parent = nullptr);

    QComboBox* secondaryChoice() const { return m_secondary; }
    QComboBox* scriptChoice() const { return m_script; }
    // Shows the options the displays use now.
    void update();

private:
    void apply();

    PLSettingsStore& m_store;
    QComboBox* m_secondary = nullptr;
    QComboBox* m_script = nullptr;
};
