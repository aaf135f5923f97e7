// The x/y picture: pixels of the bitmap, texts of the drawing.
#include "evaluation/XyPicture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <list>

#include "evaluation/PathLine.h"
#include "platform/drawing/SvgDC.h"
#include "tests/evaluation/StrokeData.h"
#include "tests/support/ScaledDisplay.h"

namespace {

constexpr COLORREF TEXT = RGB(40, 40, 40);
constexpr COLORREF GRID = RGB(225, 225, 225);
constexpr COLORREF ZERO = RGB(150, 150, 150);
constexpr COLORREF BLUE = RGB(20, 60, 150);
constexpr COLORREF ORANGE = RGB(240, 150, 50);
constexpr COLORREF GREEN = RGB(0, 135, 60);
constexpr COLORREF RED = RGB(205, 0, 0);
constexpr COLORREF GREY = RGB(130, 130, 130);

/// There and back in a straight line: the force is half the position.
const Points RAMP{{0, 0}, {1000, 500}, {0, 0}};

Area At(GridRange x, GridRange y) {
    for (auto* pEnd : {&x.m_low, &x.m_high, &y.m_low, &y.m_high})
        if (*pEnd) **pEnd *= GRID_PER_VALUE;
    return {x, y};
}

class XyPictures : public ::testing::Test {
  protected:
    void Add(const Points& points) {
        m_data.emplace_back(points);
        m_strokes.emplace_back(m_data.back().m_curve, EXAMPLE_RATE);
    }

    void Draw(bool bJudged = true, CSize size = XY_PICTURE_SIZE) {
        m_size = size;
        m_bitmap.CreateBitmap(size.cx, size.cy);
        m_dc.SelectBitmap(&m_bitmap);
        DrawOn(m_dc, bJudged, size);
        // Only the frame is as long as this.
        const auto columns = FindColumns(TEXT), rows = FindRows(TEXT);
        m_left = columns.at(0), m_right = columns.at(columns.size() - 1);
        m_top = rows.at(0), m_bottom = rows.at(rows.size() - 1);
    }
    void DrawOn(CDC& dc, bool bJudged, CSize size) {
        std::list<StrokeVerdict> verdicts;
        XyPicture picture{{}, m_bLimits ? &m_limits : nullptr, L"w.rt3", m_bVoltage};
        for (const CStroke& stroke : m_strokes) {
            verdicts.push_back(JudgeStroke(stroke, m_limits));
            picture.m_strokes.push_back({&stroke, bJudged ? &verdicts.back() : nullptr});
        }
        DrawXyPicture(dc, size, picture);
    }

    COLORREF At(int x, int y) const { return m_dc.GetPixel(x, y); }
    int Count(COLORREF color, CRect in) const {
        int nCount = 0;
        for (int y = in.top; y < in.bottom; ++y)
            for (int x = in.left; x < in.right; ++x) nCount += At(x, y) == color;
        return nCount;
    }
    int Count(COLORREF color) const { return Count(color, {0, 0, m_size.cx, m_size.cy}); }
    /// Columns, or rows, of which a colour fills more than half.
    std::vector<int> FindColumns(COLORREF color) const {
        std::vector<int> found;
        for (int x = 0; x < m_size.cx; ++x)
            if (Count(color, {x, 0, x + 1, m_size.cy}) > m_size.cy / 2) found.push_back(x);
        return found;
    }
    std::vector<int> FindRows(COLORREF color) const {
        std::vector<int> found;
        for (int y = 0; y < m_size.cy; ++y)
            if (Count(color, {0, y, m_size.cx, y + 1}) > m_size.cx / 2) found.push_back(y);
        return found;
    }
    /// The pixel of a value on an axis that goes from one value to another.
    int X(double dAt, double dLow = -50, double dHigh = 1050) const {
        return static_cast<int>(
            std::lround(m_left + (dAt - dLow) / (dHigh - dLow) * (m_right - m_left)));
    }
    int Y(double dAt, double dLow = -25, double dHigh = 525) const {
        return static_cast<int>(
            std::lround(m_bottom - (dAt - dLow) / (dHigh - dLow) * (m_bottom - m_top)));
    }

    struct Text {
        std::string m_strText;
        double m_dX, m_dY, m_dSize;
        std::string m_strColor;
    };
    /// The texts of an SVG drawing.
    std::vector<Text> FindTexts(CSize size = XY_PICTURE_SIZE, int nUnits = 1) {
        CSvgDC dc(size, nUnits);
        DrawOn(dc, true, size);
        const auto bytes = dc.EncodeSvg();
        const std::string strFile(bytes.begin(), bytes.end());
        std::vector<Text> texts;
        for (std::size_t n = 0; (n = strFile.find("<text", n)) != std::string::npos; ++n) {
            const auto get = [&](const std::string& strKey) {
                const std::size_t nFrom = strFile.find(strKey + "=\"", n) + strKey.size() + 2;
                return strFile.substr(nFrom, strFile.find('"', nFrom) - nFrom);
            };
            const std::size_t nText = strFile.find('>', n) + 1;
            texts.push_back({strFile.substr(nText, strFile.find('<', nText) - nText),
                             std::stod(get(" x")), std::stod(get(" y")),
                             std::stod(get("font-size")), get("fill")});
        }
        return texts;
    }
    std::string JoinTexts(CSize size = XY_PICTURE_SIZE, int nUnits = 1) {
        std::string strAll;
        for (const Text& text : FindTexts(size, nUnits)) strAll += text.m_strText + '|';
        return strAll;
    }

    std::list<StrokeData> m_data;
    std::vector<CStroke> m_strokes;
    bool m_bLimits = true;
    Limits m_limits;
    bool m_bVoltage = false;
    CSize m_size;
    CBitmap m_bitmap;
    CDC m_dc;
    int m_left = 0, m_right = 0, m_top = 0, m_bottom = 0;
};

TEST_F(XyPictures, SpanWhatTheyShowAndAFewPercentMore) {
    Add(RAMP);
    Draw();
    // A fifth of the values is the least that leaves 80 pixels, a tenth of the forces 40.
    std::vector<int> columns, rows;
    for (int n = 200; n <= 1000; n += 200) columns.push_back(X(n));
    for (int n = 500; n >= 50; n -= 50) rows.push_back(Y(n));
    EXPECT_EQ(FindColumns(GRID), columns);
    EXPECT_EQ(FindRows(GRID), rows);
    EXPECT_EQ(FindColumns(ZERO), std::vector{X(0)});
    EXPECT_EQ(FindRows(ZERO), std::vector{Y(0)});
    EXPECT_EQ(At(X(1000), Y(500)), ORANGE);
    EXPECT_EQ(Count(ORANGE, {X(1000) + 2, 0, m_size.cx, m_size.cy}), 0);
    // A path without any height, 1 to each side.
    m_strokes.clear();
    Add({{0, 7}, {10, 7}});
    Draw();
    EXPECT_EQ(At(X(5, -0.5, 10.5), Y(7, 6, 8)), BLUE);
    EXPECT_EQ(FindRows(GRID).size(), 8u) << "6.2 to 7.8, 7 below the path";
}

TEST_F(XyPictures, NameWhatTheyShow) {
    Add(RAMP);
    m_limits.m_scales = {{"N", 0.5, -10}, {"mm", 0.001, 1}};
    EXPECT_EQ(JoinTexts(), "1.0|1.2|1.4|1.6|1.8|2.0|0|50|100|150|200|250|position [mm]|force [N]|"
                           "w.rt3: PASS|");
    Draw();
    EXPECT_NEAR(FindTexts().at(1).m_dX, X(200), 1) << "200 values, 1.2 mm";
    EXPECT_EQ(FindRows(ZERO), std::vector{Y(20)}) << "20 values, 0 N";
    Add({{0, 0}, {1000, 500}});
    Add({{0, 0}, {1000, 501}});
    m_limits.m_strTitle = "Seat";
    m_limits.m_scales = {};
    m_limits.m_objects.push_back({"p", FeatureLimit{{FeatureKind::PeakForce}, {}, 500}});
    m_bVoltage = true;
    EXPECT_TRUE(JoinTexts().ends_with("|voltage|force|Seat: 2 PASS, 1 FAIL|"));
    m_bLimits = false;
    m_strokes.clear();
    Add({{-3, -1}, {-1, 1}});
    EXPECT_EQ(JoinTexts({400, 200}), "-3.0|-2.5|-2.0|-1.5|-1.0|-1|0|1|voltage|force|w.rt3: PASS|");
}

TEST_F(XyPictures, GrowTheirTextsAndLeaveOutLabelsWithoutRoom) {
    Add(RAMP);
    const std::pair<CSize, double> sizes[] = {
        {{100, 100}, 11}, {{800, 600}, 13}, {{4000, 3000}, 66}};
    for (const auto& [size, dText] : sizes) EXPECT_EQ(FindTexts(size).at(0).m_dSize, dText);
    // 2604 pixels for 550 values: 40 are 8.4, but every tenth leaves no room for a label.
    EXPECT_NE(JoinTexts({4000, 3000}).find("|-20|0|20|40|"), std::string::npos);
    Draw(true, {4000, 3000});
    for (int n = -20; n <= 520; n += 10)
        EXPECT_EQ(At(m_right - 20, Y(n)), n == 0 ? ZERO : GRID) << n;
    // On a display of another scale everything stands in the same places, as much thicker.
    const std::string strTexts = JoinTexts();
    const ScaledDisplay display(4);
    EXPECT_EQ(JoinTexts({3200, 2400}, 4), strTexts);
    EXPECT_EQ(FindTexts({3200, 2400}, 4).at(0).m_dSize, 52);
    m_limits.m_objects = {{"w", WindowLimit{Branch::Forward, ::At({700, 900}, {400, 450})}}};
    Draw(true, {3200, 2400});
    EXPECT_EQ(Count(RED, {X(850), Y(450) - 30, X(850) + 1, Y(450) + 30}), 8);
}

TEST_F(XyPictures, ShowWhichLimitsHeld) {
    const CSides left{Side::Left}, right{Side::Right}, bottom{Side::Bottom}, top{Side::Top};
    const Branch forward = Branch::Forward;
    Add(RAMP);
    m_limits.m_objects = {
        {"failed", WindowLimit{forward, ::At({700, 900}, {400, 450}), left, right}},
        {"passed", WindowLimit{forward, ::At({700, 900}, {0, 470}), left, right}},
        {"through", WindowLimit{forward, ::At({200, 400}, {50, 300}), left, right}},
        {"upwards", WindowLimit{forward, ::At({420, 600}, {220, 290}), bottom, top}},
        {"open", BlockLimit{forward, ::At({950, {}}, {{}, 100})}},
        {"edge", WindowLimit{forward, ::At({{}, 100}, {350, {}}), left, right}},
        {"line", LineLimit{forward, 325'000, {610'000, 690'000}}},
        {"tube", EnvelopeLimit{forward, {{0, -20'000}, {900'000, -20'000}}, {}, 5'000}},
    };
    Draw();
    const auto y = [&](double dForce) { return Y(dForce, -51.25, 526.25); };
    // Failed: red, two pixels thick, above what passed; a cross where it failed, at the turn.
    EXPECT_EQ(At(X(700), y(425)), RED);
    EXPECT_EQ(Count(RED, {X(800), y(450) - 4, X(800) + 1, y(450) + 5}), 2);
    EXPECT_EQ(Count(RED, {X(700) - 4, y(445), X(700) + 5, y(445) + 1}), 2);
    const CPoint turn{X(1000), y(500)};
    for (const CPoint arm : {CPoint{-3, -3}, {3, -3}, {-3, 3}, {3, 3}})
        EXPECT_EQ(At(turn.x + arm.x, turn.y + arm.y), RED) << arm.x << ' ' << arm.y;
    EXPECT_EQ(Count(RED, {X(920), m_top, m_right, m_bottom}),
              Count(RED, {turn.x - 9, turn.y - 9, turn.x + 10, turn.y + 10}));
    // Passed: green, one pixel.
    EXPECT_EQ(Count(GREEN, {X(300), y(300) - 4, X(300) + 1, y(300) + 5}), 1);
    for (const CPoint edge : {CPoint{X(200), y(280)}, {X(400), y(60)}, {X(300), y(50)}})
        EXPECT_EQ(At(edge.x, edge.y), GREEN);
    EXPECT_EQ(Count(GREEN, {X(250), y(280), X(350), y(200)}), 0);
    // The heads of the arrows lie inside where the path comes in, outside where it goes.
    const auto countHead = [&](int x, int nY) {
        return Count(GREEN, {x - 2, nY - 2, x + 3, nY + 3});
    };
    const int nMiddle = (y(50) + y(300)) / 2, nCenter = (X(420) + X(600)) / 2;
    EXPECT_GT(countHead(X(200) + 4, nMiddle), countHead(X(200) - 4, nMiddle) + 2);
    EXPECT_GT(countHead(X(400) + 4, nMiddle), countHead(X(400) - 4, nMiddle) + 2);
    EXPECT_GT(countHead(nCenter, y(220) - 4), countHead(nCenter, y(220) + 4) + 2);
    EXPECT_GT(countHead(nCenter, y(290) - 4), countHead(nCenter, y(290) + 4) + 2);
    EXPECT_EQ(Count(GREEN, {nCenter, y(220) - 5, nCenter + 1, y(220) + 6}), 11);
    // Open sides lie on the plot's edge, and nothing beyond it; a block is hatched.
    EXPECT_EQ(At(X(50), m_top), RED);
    EXPECT_EQ(At(m_left, y(500)), RED);
    EXPECT_EQ(Count(RED, {0, 0, m_left, m_size.cy}), 0);
    EXPECT_GT(Count(GREEN, {X(950), m_bottom, m_right, m_bottom + 1}), 50);
    const CRect inside{X(960), y(0), X(1040), y(-40)};
    EXPECT_GT(Count(GREEN, inside), inside.Width() * inside.Height() / 12);
    EXPECT_LT(Count(GREEN, inside), inside.Width() * inside.Height() / 3);
    EXPECT_EQ(Count(GREEN, {X(905), y(0), X(950) - 1, m_bottom}), 0);
    // The line from end to end; the bound as it is applied.
    EXPECT_EQ(Count(GREEN, {X(610), y(325), X(690), y(325) + 1}), X(690) - X(610));
    EXPECT_EQ(Count(GREEN, {X(0), y(-25), X(190), y(-25) + 1}), X(190) - X(0));
    EXPECT_EQ(At(X(890), y(-25)), GREEN);
    for (const Text& text : FindTexts()) {
        if (text.m_strText == "through") {
            EXPECT_NEAR(text.m_dX, X(200) + 5, 3);
            EXPECT_NEAR(text.m_dY, y(300) + 14, 3);
            EXPECT_EQ(text.m_strColor, "#00873c");
        }
        if (text.m_strText == "failed") {
            EXPECT_EQ(text.m_strColor, "#cd0000");
        }
    }
    EXPECT_NE(JoinTexts().find("failed|"), std::string::npos);
    EXPECT_NE(JoinTexts().find("through|"), std::string::npos);

    Draw(false);
    EXPECT_EQ(Count(GREEN) + Count(RED), 0);
    EXPECT_EQ(At(X(200), y(280)), GREY);
    // Of several strokes one that fails is enough.
    m_limits.m_objects.resize(3);
    m_strokes.clear();
    Add({{0, 0}, {1000, 0}});
    Add(RAMP);
    Draw();
    EXPECT_EQ(At(X(200), Y(280)), RED);
}

TEST_F(XyPictures, ReachAsFarAsTheLimits) {
    Add(RAMP);
    m_limits.m_objects = {
        {"line", LineLimit{Branch::Forward, 1'000'000, {0, 100'000}, Direction::Up, false}},
        {"block", BlockLimit{Branch::Forward, ::At({2000, 2200}, {-400, 600})}}};
    Draw();
    EXPECT_EQ(At(X(50, -110, 2310), Y(1000, -470, 1070)), GREEN);
    const int x = X(2000, -110, 2310), yFrom = Y(200, -470, 1070), yTo = Y(-300, -470, 1070);
    EXPECT_EQ(Count(GREEN, {x, yFrom, x + 1, yTo}), yTo - yFrom);
    m_strokes.clear();
    Draw();
    EXPECT_EQ(Count(GREEN), 0);
    EXPECT_GT(Count(GREY), 0) << "limits that nothing was held against";
}

TEST_F(XyPictures, DrawTheNewestStrokeOnTop) {
    Add(RAMP);
    Draw();
    EXPECT_LE(Count(BLUE), 1) << "the way back is the same, but for its last pixel";
    Add({{0, 0}, {1000, 500}});
    Draw();
    EXPECT_LE(Count(ORANGE), 1);
    EXPECT_GE(Count(BLUE), X(1000) - X(0));
}

TEST(XyPath, KeepsTheExtremesOfEachColumn) {
    // A hundred positions to a pixel; forces are pixels from the top.
    const CXyAxis positions({0, 1000}, 0, 10), forces({0, 100}, 0, 100);
    const auto trace = [&](const Points& points) {
        const StrokeData data(points);
        const CStroke stroke(data.m_curve, 1);
        std::string strPoints;
        for (const CPoint point : TracePath(stroke, {0, points.size() - 1}, positions, forces))
            strPoints += std::to_string(point.x) + ',' + std::to_string(point.y) + ' ';
        return strPoints;
    };
    EXPECT_EQ(trace({{0, 5}, {10, 9}, {20, 7}, {20, 1}, {30, 6}, {100, 8}, {301, 8}}),
              "0,5 0,9 0,1 0,6 1,8 3,8 ");
    EXPECT_EQ(trace({{0, 5}, {9, 1}, {10, 3}, {20, 9}, {30, 6}, {100, 2}, {101, 4}, {5, 3}}),
              "0,5 0,1 0,9 0,6 1,2 1,4 0,3 ");
    EXPECT_EQ(trace({{0, 5}, {10, 5}, {20, 5}}), "0,5 ");
    EXPECT_EQ(trace({{0, 5}, {10, 9}, {20, 5}, {30, 1}, {40, 5}}), "0,5 0,9 0,1 0,5 ");
}

}  // namespace
