#include "report/support/MeasuredRun.h"
#include "screens/frmVerify/frmVerify.h"
#include "screens/report/ReportScreen.h"

#include <QApplication>
#include <QTableWidget>
#include <QTest>

namespace {

class VerifyForm : public ReportScreen {
protected:
    /// Verifies from the viewer's menu, to the end.
    frmVerify& Verify() {
        frmVerify& verify = Begin();
        // The verdict comes first, then what is held against the file's seals.
        while (!Find<QPushButton>(verify, "cmdSeal").isEnabled())
            QApplication::processEvents();
        return verify;
    }
    frmVerify& Begin() {
        Choose(*form, "mnuToolItem_5");
        return Find<frmVerify>(*form, "frmVerify");
    }
    static QString Verdict(const frmVerify& verify) {
        return Find<QLabel>(verify, "lblVerdict").text();
    }
    static QTableWidget& Table(const frmVerify& verify) {
        return Find<QTableWidget>(verify, "tblDiverged");
    }
};

} // namespace

TEST_F(VerifyForm, A_file_as_it_was_measured_passes_without_a_list) {
    View(MeasuredRun(1, 50).Text());
    frmVerify& verify = Verify();
    EXPECT_TRUE(Verdict(verify).startsWith("50 records, ")) << Verdict(verify).toStdString();
    EXPECT_TRUE(Verdict(verify).contains(" none diverged, none not to be computed."));
    EXPECT_FALSE(Table(verify).isVisible());
    EXPECT_EQ(verify.windowTitle(), "Verify File - run.4ch");
    EXPECT_EQ(ControlsWithoutName(verify), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(verify), std::vector<std::string>{});
    ExpectFitsAtDoubleScale(verify);
    ExpectRestsInEverySize(verify);
}

TEST_F(VerifyForm, An_edited_value_is_listed_and_a_click_goes_there) {
    MeasuredRun measured(1, 700);
    measured.records[650][1][Quantity::ppm] = "777.7";
    measured.records[660][0][Quantity::pH] = "1.11";
    View(measured.Text());
    const frmVerify& verify = Verify();
    EXPECT_TRUE(Verdict(verify).startsWith("Values diverge: 700 records, "));
    QTableWidget& table = Table(verify);
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_TRUE(table.isVisible());
    EXPECT_EQ(table.item(0, 0)->text(), "651");
    EXPECT_EQ(table.item(0, 1)->text(), "Chan 2");
    EXPECT_EQ(table.item(0, 2)->text(), "ppm");
    EXPECT_EQ(table.item(0, 4)->text(), "777.7");
    EXPECT_EQ(table.item(1, 2)->text(), "pH");

    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier,
                      table.visualItemRect(table.item(0, 0)).center());
    EXPECT_TRUE(List(0).LineText(List(0).CurrentLine()).startsWith("Record 651\t"))
        << List(0).CurrentLine();
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_TRUE(List(0).LineText(List(0).CurrentLine()).startsWith("Record 661\t"));
}

TEST_F(VerifyForm, What_cannot_be_computed_is_said_with_its_reason) {
    View(MeasurementText().File(20)); // without a calibration
    const frmVerify& verify = Verify();
    const auto& reasons = Find<QLabel>(verify, "lblReasons");
    EXPECT_TRUE(reasons.isVisible());
    EXPECT_TRUE(reasons.text().contains(
        "Chan 1 ppm: 20 not to be computed: the header holds no calibration of this channel"))
        << reasons.text().toStdString();
}

TEST_F(VerifyForm, Escape_stops_a_verification_that_runs_and_then_closes) {
    MeasuredRun measured(1, 300);
    View(measured.Text());
    frmVerify& verify = Begin();
    EXPECT_TRUE(Verdict(verify).startsWith("Verifying, 0 % complete."));
    QTest::keyClick(&verify, Qt::Key_Escape);
    EXPECT_TRUE(Verdict(verify).startsWith("Stopped at 0 %. So far: 0 records, "))
        << Verdict(verify).toStdString();
    EXPECT_TRUE(verify.isVisible());
    Settle();
    EXPECT_TRUE(Verdict(verify).startsWith("Stopped"));
    QTest::keyClick(&verify, Qt::Key_Escape);
    EXPECT_FALSE(verify.isVisible());
}

TEST_F(VerifyForm, A_saved_seal_is_found_again_and_tells_a_change) {
    const std::string text = MeasuredRun(1, 30).Text();
    View(text);
    frmVerify& verify = Verify();
    const auto& seal = Find<QLabel>(verify, "lblSeal");
    EXPECT_FALSE(seal.isVisible());
    platform.dialogs.ExpectFileDialog([](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.fileName, "run.4ch.seal");
        return request.initialFolder / request.fileName;
    });
    Click(verify, "cmdSeal");
    while (seal.text().contains("being made"))
        QApplication::processEvents();
    EXPECT_EQ(seal.text(), "Seal: saved as run.4ch.seal at 07.Mar.2003 14:05:33");

    const auto sealText = [this](const std::string& bytes) {
        View(bytes);
        const frmVerify& again = Verify();
        const auto& label = Find<QLabel>(again, "lblSeal");
        while (label.text().isEmpty())
            QApplication::processEvents();
        return label.text();
    };
    EXPECT_EQ(sealText(text), "Seal: unchanged since 07.Mar.2003 14:05:33");
    std::string changed = text;
    changed[changed.find("Comment:", changed.find("Record 9\t"))] = 'c';
    EXPECT_TRUE(sealText(changed).startsWith("Seal: changed since 07.Mar.2003 14:05:33: byte "));
    WriteBytes(File("run.4ch.seal"), "wax");
    const QString broken = sealText(text);
    EXPECT_TRUE(broken.startsWith("Seal: Reading ")) << broken.toStdString();
    EXPECT_TRUE(broken.endsWith("run.4ch.seal: This is no seal")) << broken.toStdString();
}

TEST_F(VerifyForm, Another_file_takes_the_verdict_away) {
    View(MeasuredRun(1, 5).Text());
    Verify();
    View(MeasuredRun(2, 5).Text(), "other.4ch");
    EXPECT_EQ(form->findChild<frmVerify*>("frmVerify"), nullptr);
    Begin();
    form->close();
    EXPECT_EQ(form->findChild<frmVerify*>("frmVerify"), nullptr);
}
