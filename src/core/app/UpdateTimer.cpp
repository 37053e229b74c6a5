#include "core/app/UpdateTimer.h"

#include <QTimer>

namespace {
class QtUpdateTimer : public UpdateTimer {
public:
    void start(int intervalMs, std::function<void()> tick) override
    {
        m_timer.disconnect();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(tick));
        m_timer.start(intervalMs);
    }
    void stop() override { m_timer.stop(); }
    bool isActive() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
};
} // namespace

std::unique_ptr<UpdateTimer> UpdateTimer::createQtTimer()
{
    return std::make_unique<QtUpdateTimer>();
}
