// Random events to the workspace of AI erasing.
#include "../workspace/WorkspaceMonkey.h"
#include "ErasingBench.h"

namespace {

// Areas are refused during a run, whoever tries to change them. One that is being dragged is not where it was put
// when the frame moves, or is not on that frame at all.
struct CagedBench : zk::test::ErasingBench
{
    const zk::test::ExpectedMessage refused {QStringLiteral(
        "Failed to (create|update|remove) crop|No data ID mapping found|Forcing resync")};
    const zk::test::ExpectedMessage dragged {QStringLiteral("COORDINATE MISMATCH|Invalid crop ID")};
    // The offscreen platform activates every window that is shown, overlays too, and a list that drops down
    // gives the focus back to what was active.
    const zk::test::ExpectedMessage activated {QStringLiteral("requestActivate\\(\\) called for")};
};

} // namespace

int main(int argc, char **argv)
{
    return zk::test::runMonkey(argc, argv, 1000, [] {
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        return std::make_unique<CagedBench>();
    });
}
