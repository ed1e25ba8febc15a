// The pipeline's arithmetic: frame conversion, region cuts, search areas, motion, stream pacing,
// transit lines and the daily log, each checked against hand-computed values.
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "TestSupport.h"
#include "pipeline/FrameConverter.h"
#include "pipeline/MotionArea.h"
#include "pipeline/RecognitionLog.h"
#include "pipeline/RegionCutter.h"
#include "pipeline/SearchArea.h"
#include "pipeline/StreamPacer.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"

namespace {

std::vector<uint8_t> Ramp(size_t size) {
    std::vector<uint8_t> bytes(size);
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<uint8_t>(i * 7 + 3);
    return bytes;
}

}  // namespace

TEST(FrameConverter, GreyFramesCarryTheInBandBytesOnlyAbove300Pixels) {
    const std::vector<uint8_t> raw = Ramp(20 * 16);
    cv::Mat picture;
    ASSERT_TRUE(FrameConverter::Convert(raw.data(), 20, 15, 1, picture));
    EXPECT_EQ(picture.at<cv::Vec3b>(0, 1), cv::Vec3b(raw[1], raw[1], raw[1]));

    ASSERT_TRUE(FrameConverter::Convert(raw.data(), 20, 16, 1, picture));
    // The first 300 bytes are the raw grey bytes, so the first 100 pixels show them as colour.
    EXPECT_EQ(0, std::memcmp(picture.data, raw.data(), 300));
    EXPECT_EQ(picture.at<cv::Vec3b>(0, 99), cv::Vec3b(raw[297], raw[298], raw[299]));
    EXPECT_EQ(picture.at<cv::Vec3b>(5, 0), cv::Vec3b(raw[100], raw[100], raw[100]));
}

TEST(FrameConverter, YuvUsesTheIntegerFormulaAndClamps) {
    // U=0, Y0=255, V=255, Y1=0: a = 127*1435>>10 = 177, b = 127*731>>10 = 90,
    // c = -128*352>>10 = -44, d = -128*1814>>10 = -227.
    const uint8_t group[4] = {0, 255, 255, 0};
    uint8_t rgb[6];
    FrameConverter::YuvPairToRgb(group, rgb);
    EXPECT_EQ(rgb[0], 255);  // 255 + 177 clamped
    EXPECT_EQ(rgb[1], 209);  // 255 + 44 - 90
    EXPECT_EQ(rgb[2], 28);   // 255 - 227
    EXPECT_EQ(rgb[3], 177);  // 0 + 177
    EXPECT_EQ(rgb[4], 0);    // 0 + 44 - 90 clamped
    EXPECT_EQ(rgb[5], 0);    // 0 - 227 clamped
    // A negative product shifts arithmetically: V = 127 gives a = (-1435)>>10 = -2.
    const uint8_t grey[4] = {128, 100, 127, 100};
    FrameConverter::YuvPairToRgb(grey, rgb);
    EXPECT_EQ(rgb[0], 98);
}

TEST(FrameConverter, RgbxDropsTheFourthByteAndRejectsBadFrames) {
    const std::vector<uint8_t> raw = Ramp(4 * 4 * 4);
    cv::Mat picture;
    ASSERT_TRUE(FrameConverter::Convert(raw.data(), 4, 4, 4, picture));
    EXPECT_EQ(picture.at<cv::Vec3b>(0, 1), cv::Vec3b(raw[4], raw[5], raw[6]));
    EXPECT_FALSE(FrameConverter::Convert(nullptr, 4, 4, 3, picture));
    EXPECT_FALSE(FrameConverter::Convert(raw.data(), 0, 4, 3, picture));
    EXPECT_FALSE(FrameConverter::Convert(raw.data(), 4, 4, 5, picture));
    EXPECT_FALSE(FrameConverter::Convert(raw.data(), 100000, 100000, 1, picture));
    EXPECT_TRUE(picture.empty());
}

TEST(RegionCutter, BoxWidthIsAMultipleOf16AndNarrowRegionsYieldNothing) {
    const int whole[4] = {0, 0, 1000, 1000};
    const RegionBox box = RegionCutter::BoxOf(whole, 1000, 600);
    EXPECT_EQ(box.width, 992);
    EXPECT_EQ(box.height, 600);
    const int narrow[4] = {100, 0, 115, 1000};  // 15 pixels of a 1000-pixel frame
    EXPECT_EQ(RegionCutter::BoxOf(narrow, 1000, 600).width, 0);

    Lane lane;
    std::copy(narrow, narrow + 4, lane.roi);
    lane.shape = lane.RoiCorners();
    const cv::Mat frame(600, 1000, CV_8UC3, cv::Scalar(9, 9, 9));
    EXPECT_TRUE(RegionCutter::Cut(frame, lane).empty());
}

TEST(RegionCutter, PixelsOutsideThePolygonAreBlackAndTheCutStopsShortOfTheEdge) {
    const cv::Mat frame(100, 160, CV_8UC3, cv::Scalar(200, 100, 50));
    Lane lane;
    lane.roi[0] = 0;
    lane.roi[1] = 0;
    lane.roi[2] = 1000;
    lane.roi[3] = 1000;
    lane.shape = {{0, 0}, {500, 0}, {0, 1000}};  // a triangle over the left half
    const cv::Mat cut = RegionCutter::Cut(frame, lane);
    // 160 wide: (1000*160/4000)*4 = 160, a multiple of 16, inside the frame.
    ASSERT_EQ(cut.cols, 160);
    ASSERT_EQ(cut.rows, 100);
    EXPECT_EQ(cut.at<cv::Vec3b>(1, 1), cv::Vec3b(200, 100, 50));
    EXPECT_EQ(cut.at<cv::Vec3b>(90, 150), cv::Vec3b(0, 0, 0));

    // A box running over the frame stops one pixel short of its edges.
    const cv::Mat mask(90, 160, CV_8UC1, cv::Scalar(255));
    const cv::Mat over = RegionCutter::CutMaskedRegion(frame, mask, 10, 20, 160, 90);
    EXPECT_EQ(over.cols, 149);
    EXPECT_EQ(over.rows, 79);
    EXPECT_TRUE(RegionCutter::CutMaskedRegion(frame, mask, 158, 0, 160, 90).empty());

    // Damaged regions far outside the frame neither crash nor allocate huge masks.
    lane.roi[2] = 2000000000;
    lane.roi[3] = -2000000000;
    lane.shape = {{2000000000, -2000000000}, {5, 5}, {-7, 2000000000}};
    EXPECT_NO_THROW(RegionCutter::Cut(frame, lane));
}

TEST(SearchArea, LimitsKeepTheAreaInsideAndAMultipleOfFour) {
    const SearchArea whole = SearchArea::WholeImage(320, 240).Limited(320, 240);
    EXPECT_EQ(whole.w, 316);  // 318 rounded down to a multiple of 4
    EXPECT_EQ(whole.h, 238);
    const SearchArea negative = SearchArea{-5, -9, 50, 40}.Limited(320, 240);
    EXPECT_EQ(negative.x, 1);
    EXPECT_EQ(negative.y, 1);

    const SearchArea around = SearchArea::AroundPlate({100, 50, 80, 20}, 400, 200, 10, 20);
    EXPECT_EQ(around.x, 60);
    EXPECT_EQ(around.y, 10);
    EXPECT_EQ(around.w, 160);
    EXPECT_EQ(around.h, 100);
    // An inverted motion box (still scene) is never searched.
    EXPECT_FALSE(SearchArea::FromMotion(315, 235, 5, 5).Limited(320, 240).Searchable());
}

TEST(MotionArea, SmallInputsStillScenesAndMovedPixels) {
    MotionArea motion;
    EXPECT_EQ(motion.Run(cv::Mat(30, 19, CV_8UC1, cv::Scalar(0))), -1);
    EXPECT_EQ(motion.x1, 19);
    EXPECT_EQ(motion.y1, 30);
    EXPECT_EQ(motion.x2, 0);

    const cv::Mat still(480, 640, CV_8UC1, cv::Scalar(60));
    ASSERT_EQ(motion.Run(still), 0);  // first picture: the average is the picture
    EXPECT_GT(motion.x1, motion.x2);
    ASSERT_EQ(motion.Run(still), 0);
    EXPECT_GT(motion.x1, motion.x2);

    // Moved pixels from x 100 to 110 at working size (after the opening, which shifts a block
    // one pixel right: 198..219 at 640 become 99..109, then 100..110): the box at working size
    // is 95..115 with the margin, times scale 2.0.
    cv::Mat moved = still.clone();
    moved(cv::Rect(198, 200, 22, 40)).setTo(250);
    ASSERT_EQ(motion.Run(moved), 0);
    EXPECT_EQ(motion.x1, 190);
    EXPECT_EQ(motion.x2, 230);

    // A new size restarts the average: no motion is seen on its first picture.
    ASSERT_EQ(motion.Run(cv::Mat(200, 320, CV_8UC1, cv::Scalar(250))), 0);
    EXPECT_GT(motion.x1, motion.x2);
}

TEST(StreamPacer, PeriodStallAndOutputSize) {
    EXPECT_EQ(StreamPacer::PeriodOf(0), 100);
    EXPECT_EQ(StreamPacer::PeriodOf(3), 333);
    StreamPacer pacer(1000);
    EXPECT_FALSE(pacer.DueStrict(1000));
    EXPECT_TRUE(pacer.DueOrEqual(1000));
    // Far behind after a stall: pulled up to now, so no burst follows.
    pacer.Advance(50000, 100);
    EXPECT_EQ(pacer.Next(), 50000u);
    EXPECT_FALSE(pacer.DueStrict(50000));
    pacer.Advance(50001, 100);
    EXPECT_EQ(pacer.Next(), 50100u);
    // Across the wrap of the tick count.
    StreamPacer wrapping(0xFFFFFFF0u);
    EXPECT_TRUE(wrapping.DueStrict(5));
    EXPECT_EQ(StreamPacer::OutputSize(1282, 722, 2), cv::Size(320, 180));
    EXPECT_EQ(StreamPacer::OutputSize(1282, 722, 1), cv::Size(640, 360));
    EXPECT_EQ(StreamPacer::OutputSize(1283, 723, 0), cv::Size(1282, 722));
}

TEST(TransitLine, FieldsBeforeTheLastSeparatorAndField11Behind) {
    const auto arrival = WallClock::now();
    // Plate, lane, time with milliseconds, and a path: three separators, so the path is
    // field 11 and the image stays empty.
    const LPRPackage record =
        TransitLine::Record("AB123CD::Gate::05-03-2013 10:11:12.250::/img/a.jpg", arrival);
    EXPECT_EQ(record.plate, "AB123CD");
    EXPECT_EQ(record.lane, "Gate");
    EXPECT_EQ(record.milliseconds, 250);
    EXPECT_EQ(record.image, "");
    EXPECT_EQ(record.rect[3], 0);
    const std::time_t seconds = WallClock::to_time_t(record.time);
    std::tm local{};
    localtime_r(&seconds, &local);
    EXPECT_EQ(local.tm_mday, 5);
    EXPECT_EQ(local.tm_mon, 2);
    EXPECT_EQ(local.tm_year, 113);
    EXPECT_EQ(local.tm_sec, 12);

    const LPRPackage none = TransitLine::Record("just text", arrival);
    EXPECT_EQ(none.plate, "");
    EXPECT_EQ(none.countryid, -1);
    EXPECT_EQ(none.iso, "Unknown");
    EXPECT_EQ(none.time, arrival);

    const TransitLine one = TransitLine::Split("PLATE::17");
    EXPECT_EQ(one.field[0], "PLATE");
    EXPECT_FALSE(one.present[1]);
    EXPECT_EQ(one.field[11], "17");

    const LPRPackage full =
        TransitLine::Record("P::L::bad time::i.jpg::t::380::ITA::5::1::2::3::4", arrival);
    EXPECT_EQ(full.time, arrival);  // an unreadable time keeps the arrival
    EXPECT_EQ(full.image, "i.jpg");
    EXPECT_EQ(full.countryid, 380);
    EXPECT_EQ(full.direction, 5);
    EXPECT_EQ(full.rect[0], 1);
    EXPECT_EQ(full.rect[3], 4);
}

TEST(RecognitionLog, LineDefaultsFileNameAndOneHeaderADay) {
    std::tm day{};
    day.tm_mday = 5;
    day.tm_mon = 2;
    day.tm_year = 113;
    day.tm_hour = 7;
    EXPECT_EQ(RecognitionLog::FileName("Gate1", day), "LPR_Logs/Gate1_05_03_2013.csv");
    EXPECT_EQ(RecognitionLog::LineOf(day, "AB123CD", 22, ""),
              "05-03-2013 07:00:00;AB123CD;22;1;NORES;NORES;NORES;0;0;0;NORES\n");
    // A closing text in front of its opening leaves the default; numbers pass through atoi.
    EXPECT_EQ(RecognitionLog::LineOf(day, "X", 1,
                                     "<\\ORIG>A<ORIG><PERC>7x<\\PERC><NUMROW>2<\\NUMROW>"
                                     "<CLAB>ITA<\\CLAB><FFORIG>abc<\\FFORIG>"),
              "05-03-2013 07:00:00;X;1;2;NORES;NORES;NORES;0;0;7;ITA\n");

    TempDir dir;
    platform::ScopedWorkingDirectory cwd(dir.Path());
    ASSERT_TRUE(RecognitionLog::WriteLog("Lane1", "AB123CD", 20, ""));
    ASSERT_TRUE(RecognitionLog::WriteLog("Lane1", "EF456GH", 21, "<ORIG>EF456GH<\\ORIG>"));
    std::vector<std::string> files;
    ASSERT_TRUE(platform::ListDirectory("LPR_Logs", files));
    ASSERT_EQ(files.size(), 1u);
    const std::string text = ReadFileText("LPR_Logs/" + files[0]);
    EXPECT_EQ(text.rfind(RecognitionLog::kHeader, 0), 0u);
    EXPECT_EQ(text.find("TIME;", 1), std::string::npos);
    EXPECT_NE(text.find(";EF456GH;21;1;EF456GH;"), std::string::npos);
}
