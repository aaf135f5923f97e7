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

TEST_F(RecordingTest, SaysWhatIsWrong) {
    const std::tuple<std::string, RecordingColumns, const char*> cases[] = {
        {"", {}, ": has no header row"},
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
