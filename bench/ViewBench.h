#pragma once

// What the display benchmarks share: a view host that does nothing, the panel's font and size,
// and the view set up on a lyric.

#include "core/display/LRCViewHost.h"
#include "core/display/LRCViewModel.h"
#include "core/lyric/Lyric.h"
#include "gui/display/LRCView.h"

#include <QFont>
#include <QString>

namespace bench {

class NullHost : public LRCViewHost {
public:
    void reloadData() override {}
    void scrollToOffset(double, bool) override {}
    void setContentOffset(double) override {}
    double contentOffset() const override { return 0; }
    void beginAnimation(const QString&, double, double) override {}
    void removeAllAnimations() override {}
};

// Line i's time tag: a line every 3 s.
inline QString lrcTag(int i)
{
    return QString::asprintf("[%02d:%02d.00]", i * 3 / 60, i * 3 % 60);
}

inline QFont lyricFont()
{
    QFont font;
    font.setPointSizeF(14);
    return font;
}

inline constexpr QSize kPanelSize{360, 420};

// The view model of the panel, loaded with `lyric` (every row measured once).
inline void loadModel(LRCViewModel& view, Lyric& lyric)
{
    view.rows().setFont(lyricFont());
    view.rows().setViewSize(kPanelSize);
    view.setParser(&lyric);
    view.reloadData();
}

// The panel's widget, showing `lyric`.
inline void loadView(LRCView& view, Lyric& lyric)
{
    view.setFont(lyricFont());
    view.resize(kPanelSize);
    view.setParser(&lyric);
    view.refresh();
}

} // namespace bench
