// rt3 plot as a person runs it: the pictures of a channel.
#include <set>

#include "tests/tools/ToolRun.h"

namespace {

using Plot = ToolRun;

TEST_F(Plot, DrawsAChannelAsAPicture) {
    const auto draw = [&](const std::string& strArguments) {
        const Result result = Run("$RT3 plot -o - " + strArguments);
        EXPECT_EQ(result.m_nExitCode, 0) << strArguments;
        EXPECT_EQ(result.m_strErr, "") << strArguments;
        EXPECT_EQ(result.m_strOut.substr(1, 3), "PNG") << strArguments;
        return result.m_strOut;
    };
    std::vector<int> wave;  // of many values for each column, whose group depends on the mode
    for (int n = 0; n < 5000; ++n) wave.push_back(n % 2 == 0 ? n : -1000 - n % 700);
    const auto put = [&](const char* pName, int nMode, int nRate, const auto& spans, bool bSecond) {
        FileBytes bytes;
        bytes.Long(4).Byte(nMode).Byte(0).Word(nRate).Word(1).Spans(spans).Byte(14).Byte(3);
        if (bSecond) AddCurve(bytes.Long(1), {0, 0, 9, 9});
        m_folder.Put(pName, AddCurve(bytes.Long(1), wave).Long(0).Long(0).Text());
    };
    using Spans = std::vector<std::int32_t>;
    put("first", 1, 40000, Spans{5000, 4, 1}, false);
    put("second", 1, 40000, Spans{4, 5000, 1}, true);
    put("mode", 3, 40000, Spans{5000, 4, 1}, false);
    put("rate", 1, 20000, Spans{5000, 4, 1}, false);
    put("span", 1, 40000, Spans{9000, 4, 1}, false);

    const std::string strPicture = draw("first");
    EXPECT_EQ(strPicture.substr(16, 8), std::string("\0\0\2\xBA\0\0\1\x57", 8)) << "698 x 343";
    EXPECT_EQ(draw("first --size 321x123").substr(16, 8), std::string("\0\0\1\x41\0\0\0\x7B", 8));
    EXPECT_TRUE(draw("second --channel 2") == strPicture);
    std::set<std::string> pictures{strPicture};
    for (const char* pArguments :
         {"second", "mode", "rate", "span", "first --display 1", "first --display 2",
          "first --channel 3", "first --units", "first --title T", "first --range 25:75"})
        EXPECT_TRUE(pictures.insert(draw(pArguments)).second) << pArguments;

    m_folder.Put("a.rt3", FileBytes{FileBytes::SmallCapture()}.Text());
    std::filesystem::create_directory(PathOf("out"));
    const Result some = Run("$RT3 plot first missing a.rt3 --output out");
    EXPECT_EQ(some.m_nExitCode, 1);
    EXPECT_EQ(some.m_strErr, "rt3: missing: No such file or directory.\n");
    Run("ulimit -f 0; trap '' XFSZ; $RT3 plot a.rt3 -o out/first.png");
    EXPECT_TRUE(m_folder.Get("out/first.png") == strPicture);
    EXPECT_TRUE(m_folder.Get("out/a.png") == draw("a.rt3"));
}

TEST_F(Plot, DrawsLinesAndTextsAsAVectorPicture) {
    std::vector<int> wave;
    for (int n = 0; n < 40000; ++n) wave.push_back(n % 1000);
    const auto put = [&](int nMode, int nSecondInput, int nRate) {
        FileBytes bytes;
        bytes.Long(4).Byte(nMode).Byte(nSecondInput).Word(nRate).Word(1).Spans({1000, 1, 1});
        AddCurve(bytes.Byte(14).Byte(3).Long(1), wave, {999, 1, 998, 0});
        m_folder.Put("wave.rt3", bytes.Long(0).Long(0).Text());
    };
    const auto draw = [&](const std::string& strArguments) {
        const Result result = Run("$RT3 plot wave.rt3 -o - --format svg " + strArguments);
        EXPECT_EQ(result.m_strErr, "") << strArguments;
        return result.m_strOut;
    };
    const auto count = [](const std::string& strText, const std::string& strPart) {
        int nFound = 0;
        for (std::size_t n = 0; (n = strText.find(strPart, n)) != std::string::npos; ++n) ++nFound;
        return nFound;
    };
    put(1, 0, 40000);
    const std::string strWhole = draw("");
    EXPECT_TRUE(Contains(strWhole, "width=\"698\" height=\"343\""));
    EXPECT_TRUE(Contains(strWhole, ">I #4</text>"));
    const std::string strLong = draw("--range 0:1000");
    EXPECT_EQ(count(strLong, "stroke=\"#0000ff\""), 1) << "the curve is one polyline";
    EXPECT_TRUE(Contains(strLong, "<text x=\"2521\""))
        << "36000 of 40000 values, on 656 pixels of four units";
    EXPECT_LT(count(strLong, ","), 4400)
        << "of 500 columns for each unit, of two points at the most";
    EXPECT_EQ(count(draw("--display 2"), "stroke=\"#6495ed\""), 1);
    EXPECT_TRUE(draw("--range 0:25") == strWhole);
    EXPECT_TRUE(Contains(draw("--range 250.5:500"), "text-anchor=\"start\" fill=\"#000000\">250<"));

    const std::string strLarge = draw("--size 1396x686");
    EXPECT_TRUE(Contains(strWhole, "stroke-width=\"4\"") && Contains(strWhole, "font-size=\"48\""));
    EXPECT_TRUE(Contains(strLarge, "stroke-width=\"8\"") && Contains(strLarge, "font-size=\"96\""));
    EXPECT_TRUE(Contains(strLarge, "viewBox=\"0 0 5584 2744\""));
    EXPECT_TRUE(Contains(draw("--size 1396x343"), "font-size=\"48\"")) << "not wider than high";

    const std::string strTitled = draw("--units --title='1 < 2'");
    EXPECT_TRUE(Contains(strTitled, ">1 &lt; 2</text>"));
    EXPECT_TRUE(Contains(strTitled, "translate(0 168)")) << "below title and name";
    EXPECT_TRUE(Contains(strTitled, "width=\"2788\" height=\"1128\" fill"))
        << "above the other name";
    const auto expectNames = [&](int nMode, int nSecondInput, const char* pDisplay,
                                 const char* pName) {
        put(nMode, nSecondInput, 40000);
        const std::string strPicture = draw(std::string("--units --display ") + pDisplay);
        EXPECT_TRUE(Contains(strPicture, pName)) << nMode << ' ' << pDisplay << ' ' << pName;
        EXPECT_TRUE(Contains(strPicture, ">Time [ms]<"));
    };
    expectNames(1, 0, "0", ">Force [1/1000]<");
    expectNames(1, 0, "2", ">Force [1/1000], Voltage [mV]<");
    expectNames(20, 2, "1", ">Position [1/1000]<");
    expectNames(22, 1, "1", ">Position [1/1000]<");
    expectNames(12, 1, "1", ">Force [1/1000]<");
    put(1, 0, 0);
    EXPECT_TRUE(Contains(draw("--units --range 20:7000"), ">Value index<"));
    EXPECT_TRUE(Contains(draw("--range 20:7000"), ">20<"));

    std::filesystem::create_directory(PathOf("out"));
    Run("$RT3 plot wave.rt3 -o b.SVG; $RT3 plot --format svg wave.rt3 -o out; "
        "$RT3 plot --format png wave.rt3 -o c.svg");
    EXPECT_TRUE(m_folder.Get("b.SVG").starts_with("<?xml"));
    EXPECT_TRUE(m_folder.Get("out/wave.svg").starts_with("<?xml"));
    EXPECT_EQ(m_folder.Get("c.svg").substr(1, 3), "PNG");
}

}  // namespace
