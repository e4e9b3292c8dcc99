// The common main of the test programs: offscreen, fixed locale and hash seed, and any unexpected
// warning or critical message fails the test that printed it.
#pragma once

#include <QRegularExpression>
#include <QString>
#include <QtTest>

#include <functional>

namespace zk::test {

// Swallows messages that match the pattern while it lives.
class ExpectedMessage
{
public:
    explicit ExpectedMessage(const QString &pattern);
    ~ExpectedMessage();
    ExpectedMessage(const ExpectedMessage &) = delete;
    ExpectedMessage &operator=(const ExpectedMessage &) = delete;

    // Whether at least one came.
    bool seen() const;

private:
    int m_id;
};

// Sets the environment, installs the message handler, then runs the body. A body's result that is 0
// becomes 1 when unexpected messages were printed outside a test function.
int runMain(int argc, char **argv, const std::function<int(int, char **)> &body);

} // namespace zk::test

#define ZK_TEST_MAIN_WITH(Application, TestObject)                                                 \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        return zk::test::runMain(argc, argv, [](int count, char **values) {                        \
            Application application(count, values);                                                \
            TestObject object;                                                                     \
            return QTest::qExec(&object, count, values);                                           \
        });                                                                                        \
    }
#define ZK_TEST_MAIN(TestObject) ZK_TEST_MAIN_WITH(QApplication, TestObject)
#define ZK_TEST_CORE_MAIN(TestObject) ZK_TEST_MAIN_WITH(QCoreApplication, TestObject)
