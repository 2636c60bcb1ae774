#include "QtPrinterTest.h"

#include "base/RunTimeError.h"
#include "faults/FailingCalls.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace {

using FailingCalls::Fault;

class PrintFaults : public QtPrinterTest, public testing::WithParamInterface<Fault> {
protected:
    static constexpr int records = 60;
    static constexpr const char* older = "an older document";

    /// Without the moment of its making and the number that it bears.
    QByteArray Document() const {
        static const QRegularExpression own(
            "\\d{14}|[-:T\\d]{19}(Z|[+-]\\d\\d:\\d\\d)?|[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}");
        QFile read(file);
        EXPECT_TRUE(read.open(QIODevice::ReadOnly));
        return QString::fromLatin1(read.readAll()).remove(own).toLatin1();
    }

    void PutOlder() const {
        QFile written(file);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(older);
    }

    FailingCalls::Outcome Print(int failing) {
        const auto told = [this] {
            try {
                PrintTable(records);
            } catch (const RunTimeError& error) {
                ::_exit(std::string(error.what()).empty() ? 1 : 0); // not finished
            }
        };
        return FailingCalls::InChild(told, failing, GetParam());
    }
};

} // namespace

TEST_P(PrintFaults, Whichever_call_fails_the_file_is_the_older_one_or_the_whole_new_one) {
    PrintTable(records); // with all fonts at hand, so that what follows touches this file alone
    const int calls = Print(0).calls;
    const QByteArray whole = Document();
    ASSERT_GT(calls, 4);
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE("call " + std::to_string(failing));
        PutOlder();
        const auto result = Print(failing);
        const QByteArray document = Document();
        EXPECT_TRUE(document == whole || (document == older && !result.finished))
            << document.left(80).toStdString();
        if (GetParam() != Fault::end && GetParam() != Fault::gone) {
            EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("report.pdf"))
                << "half a document left behind";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, PrintFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
