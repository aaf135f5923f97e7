#include <gtest/gtest.h>

#include "instrument/RecordedPress.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class RecordingTest : public ::testing::Test {
  protected:
    Recording Read(const std::string& strText, const RecordingColumns& columns = {}) {
        m_folder.Put("a.csv", strText);
        return ReadRecording(m_strPath, columns);
    }
    std::string ErrorOf(const std::string& strText, const RecordingColumns& columns = {}) {
        return ::ErrorOf<CRecordingError>([&] { Read(strText, columns); }).substr(m_strPath.size());
    }

    TemporaryFolder m_folder;
    const std::string m_strPath = m_folder.GetPath() / "a.csv";
};

TEST_F(RecordingTest, FindsTheUsualColumns) {
    const Recording recording = Read("\xEF\xBB\xBFPosition,judge, Force\r\n"
                                     "0.5,ok,1\r\n\r\n -0.25 ,ok,+2e1\r\n");
    EXPECT_EQ(recording.m_strFirstName, "Force");
    EXPECT_EQ(recording.m_strSecondName, "Position");
    EXPECT_EQ(recording.m_adFirst, (std::vector{1.0, 20.0}));
    EXPECT_EQ(recording.m_adSecond, (std::vector{0.5, -0.25}));

    const Recording single = Read("load\n4\n5");
    EXPECT_EQ(single.m_adFirst, (std::vector{4.0, 5.0}));
    EXPECT_TRUE(single.m_adSecond.empty());
}

TEST_F(RecordingTest, UnderstandsTheFormsThatProgramsWrite) {
    const struct {
        std::string m_strText;
        double m_dFirst, m_dSecond;  ///< of the last row; second 99: there is none
        double m_dRate;              ///< 0: none
        const char* m_pForm;
    } cases[] = {
        {"Kraft;Weg\n1;2\n0,056;-0,010\n", 0.056, -0.01, 0, "semicolons, decimal comma, header"},
        {"1\t2\r\n3\t4.5\r\n", 3, 4.5, 0, "tabs, decimal point, no header"},
        {"load\n0,5\n1,25\n", 1.25, 99, 0, "one column, decimal comma, header"},
        {"0,056\n1,1\n", 1.1, 99, 0, "one column, decimal comma, no header"},
        {"\"time, s\",\"force\"\n\"0,0\",\"1,5\"\n\"0,1\",\"2,5\"\n", 2.5, 99, 10,
         "commas, decimal comma, header"},
        {"Zeit/ms;Weg [mm];Kraft [N];\nms;mm;N;\n0;1;2;\n2;3;4;\n5;5;6;\n", 6, 5, 400,
         "semicolons, header"},
        {"force,t\n7,0\n8,0.5\n", 8, 99, 2, "commas, decimal point, header"},
        {"curve,time_ms,Force N,position_mm\n1,0,7,5\n1,2,8,6\n", 8, 6, 500, "commas, header"},
        {"curve,time_ms,ch1_force,ch1_position,ch2_force,line1\n1,0,7,5,1,0\n1,2,8,6,1,0\n", 8, 6,
         500, "commas, header"},
        {"time_stamp,force\n1,2\n", 2, 99, 0, "commas, header"},
    };
    for (const auto& one : cases) {
        const Recording recording = Read(one.m_strText);
        EXPECT_EQ(recording.m_strForm, one.m_pForm);
        EXPECT_EQ(recording.m_adFirst.back(), one.m_dFirst) << one.m_strText;
        EXPECT_EQ(recording.m_adSecond.empty() ? 99 : recording.m_adSecond.back(), one.m_dSecond);
        EXPECT_DOUBLE_EQ(recording.m_rowsPerSecond.value_or(0), one.m_dRate) << one.m_strText;
    }
    EXPECT_FALSE(Read("t,force\n9,1\n9,1\n", {"", "", false}).m_rowsPerSecond);
    EXPECT_EQ(CRecordedPress(Read("a,b\n1,0\n2,-4\n-2,3\n"), {1, 20000, 10000}).CountClamped(), 3u);
}

TEST_F(RecordingTest, SaysWhatIsWrong) {
    const std::tuple<std::string, RecordingColumns, const char*> cases[] = {
        {"", {}, ": holds no rows"},
        {"\xFF\xFE"
         "1",
         {},
         ": is written in UTF-16; save it as UTF-8"},
        {"force\r1\r2", {}, ":1: a carriage return stands where no line ends"},
        {"force,displacement\n0,056;0,010\n", {}, ":2: the row has 3 columns, the first one has 2"},
        {"force;way\n0,5;1\n0,5;1.5\n",
         {},
         ":3: column 2 holds '1.5', in a file with a decimal comma"},
        {"force\n1.234,5\n", {}, ":2: column 1 holds '1.234,5', which is no number"},
        {"1;2\n1;2\nx;2\n", {}, ":3: column 1 holds 'x', which is no number"},
        {"time,force\n0,1\n1,1\n1,1\n", {}, ":4: the time does not come after the one before"},
        {"time,force\n0,1\n1,1\n2,1\n3,1\n4,1\n9,1\n", {}, ":7: there is a gap in the time"},
        {"time (min),force\n0,1\n", {}, ": the unit of 'time (min)' is not s, ms or us"},
        {"time\n0\n", {}, ": has no column of a quantity"},
        {"force,displacement\n\n", {}, ": holds no rows"},
        {"force,displacement\n1,2\n3\n", {}, ":3: the row ends before column 2"},
        {"force\n1\nabc\n", {}, ":3: column 1 holds 'abc', which is no number"},
        {"force\n1,\nnan\n", {}, ":3: column 1 holds 'nan', which is no number"},
        {"force\n1e999\n", {}, ":2: column 1 holds '1e999', which is no number"},
        {"a,b\n1,2\n", {"c", ""}, ": has no column 'c'; its 2 columns are: a, b"},
        {"a,b\n1,2\n", {"3", ""}, ": has no column '3'; its 2 columns are: a, b"},
        {"a,b\n1," + std::string(70000, ','), {}, ":2: the line is too long"},
    };
    for (const auto& [strText, columns, pError] : cases)
        EXPECT_EQ(ErrorOf(strText, columns), pError);
    EXPECT_THROW(ReadRecording("/nowhere/at/all.csv", {}), CRecordingError);
    EXPECT_THROW(ReadRecording(m_folder.GetPath(), {}), CRecordingError);
    // Too short for a stroke.
    EXPECT_THROW(CRecordedPress(Read("force\n1\n2\n"), {1000, 1, 1}), CRecordingError);
}

PressSample ReadAt(CRecordedPress& press, double dSeconds) {
    PressSample samples[1];
    press.Read(0, dSeconds, samples);
    return samples[0];
}

TEST_F(RecordingTest, IsPlayedAtItsRateWithStraightLinesBetweenRows) {
    CRecordedPress press(Read("force,displacement\n0,0\n10,1\n30,2\n0,0\n"), {10, 20, 1000});
    EXPECT_DOUBLE_EQ(press.GetStrokeSeconds(), 0.4);
    EXPECT_DOUBLE_EQ(ReadAt(press, 0.1).m_dForce, 200);
    EXPECT_DOUBLE_EQ(ReadAt(press, 0.15).m_dForce, 400);
    EXPECT_DOUBLE_EQ(ReadAt(press, 0.15).m_dSecond, 1500);
    // Behind the last row its values stand until the stroke is over.
    EXPECT_DOUBLE_EQ(ReadAt(press, 0.39).m_dForce, 0);
}

TEST_F(RecordingTest, LinesFollowTheStroke) {
    const CRecordedPress press(Read("force,displacement\n0,0\n0,1\n50,2\n100,3\n50,2\n0,1\n0,0\n"),
                               {10, 1, 1});
    std::string strLines;  // in the middle between two rows
    for (int n = 0; n < 7; ++n)
        strLines += std::to_string(press.GetPhases().GetLines(0.1 * n + 0.05));
    EXPECT_EQ(strLines, "0137750");
}

}  // namespace
