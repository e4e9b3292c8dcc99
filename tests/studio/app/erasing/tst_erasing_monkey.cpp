// Random events to the workspace of AI erasing.
#include "../workspace/WorkspaceMonkey.h"
#include "ErasingBench.h"

int main(int argc, char **argv)
{
    return zk::test::runMonkey(argc, argv, 1000, [] {
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        return std::make_unique<zk::test::ErasingBench>();
    });
}
