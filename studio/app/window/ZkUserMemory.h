#pragma once

#include "ZkAccount.h"
#include "widgets/ZkFunctionTips.h"

namespace zk::app {

// Who is logged in and which tips were shown how often, in the user's settings, while it lives. One at a
// time. GUI thread only.
class UserMemory : private IZkAccountMemory, private IZkFunctionTipCounts
{
public:
    UserMemory();
    ~UserMemory() override;

private:
    Q_DISABLE_COPY(UserMemory)
    QString rememberedName() const override;
    void rememberName(const QString &name) override;
    int shownTimes(int tip) const override;
    void setShownTimes(int tip, int times) override;
};

} // namespace zk::app
