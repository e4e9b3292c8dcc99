// Random events to the workspace of Smart Cutout.
#include "WorkspaceMonkey.h"

int main(int argc, char **argv)
{
    return zk::test::runMonkey(
        argc, argv, 1500, [] { return std::make_unique<zk::test::WorkspaceBench>(); });
}
