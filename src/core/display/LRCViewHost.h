#pragma once

#include <QString>

// What the scrolling view's logic asks of the surface that draws it.
class LRCViewHost {
public:
    virtual ~LRCViewHost() = default;
    // The rows' heights or colours changed: lay out and repaint.
    virtual void reloadData() = 0;
    // Only the lit line moved: the rows' geometry is unchanged.
    virtual void highlightChanged() { reloadData(); }
    // Scroll to a content offset the way a list scrolls a row into place: with the list's own
    // short animation, or at once.
    virtual void scrollToOffset(double y, bool animated) = 0;
    virtual void setContentOffset(double y) = 0;
    virtual double contentOffset() const = 0;
    // A linear scroll to y over duration seconds, named so that its end can be told apart.
    // When it ends or is removed, the host calls LRCViewModel::animationDidStop.
    virtual void beginAnimation(const QString& name, double y, double duration) = 0;
    virtual void removeAllAnimations() = 0;
};
