#pragma once
#include <array>
#include <numeric>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>
#include <opencv2/dnn.hpp>

// Reads the characters of a plate with the trained sequence network: the plate's cut, with a
// margin, is squeezed to 128x32 and the network scores the blank and the 36 characters for
// each of 32 columns; repeats and blanks are removed (CTC). Each character keeps the scores
// of its strongest column, so that a template can later ask for the best character of a class.
class PlateReader {
  public:
    static constexpr int kClasses = 37;  // blank, 0-9, A-Z
    static constexpr int kColumns = 32;  // the network's scores across a cut
    static constexpr const char* kAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    // Fewer characters than this are no plate's row.
    static constexpr size_t kFewestCharacters = 3;
    // A reading extended past its box: at most this many characters more, each at least this
    // sure (percent).
    static constexpr size_t kMostCharactersBeyond = 2;
    static constexpr int kSureBeyond = 90;
    // Share of dark pixels around a character above which it stands on no plate's ground.
    static constexpr double kDarkestGround = 0.5;

    struct Text {
        std::string characters;
        std::vector<int> confidence;                       // 0..100, one a character
        std::vector<std::array<float, kClasses>> columns;  // probabilities, one a character
        std::vector<int> at;    // the network's column where each character is surest
        double logScore = 0.0;  // log probability of the best path, for ranking cuts
        int rows = 1;
        size_t upperRow = 0;  // characters of the upper row, for a plate of two rows

        int ConfidenceSum() const {
            return std::accumulate(confidence.begin(), confidence.end(), 0);
        }
    };

    explicit PlateReader(const std::string& modelFile);

    bool Ready() const { return ready_; }
    // box: the plate in grey, as a detector gives it; rows: 2 reads a plate of two rows, the
    // upper row first.
    Text Read(const cv::Mat& grey, const cv::Rect& box, int rows = 1);
    // A plate of one row read from three cuts: the box as given, a little wider and a little
    // narrower. A detector's box often clips an end character or takes in a frame or an
    // emblem beside the plate; the reading most cuts agree on wins, the likeliest when they
    // all differ. A fourth cut, a quarter of the box wider on each side, wins instead when it
    // extends that reading (see Extends). A box whose first cut reads as no row of a plate is
    // not cut again.
    Text ReadAcrossCuts(const cv::Mat& grey, const cv::Rect& box);
    // A plate of two rows read one row at a time, each as wide as a plate of one row: for
    // square plates, whose rows side by side would leave each character too narrow.
    Text ReadRowsApart(const cv::Mat& grey, const cv::Rect& box);
    // The part of the picture around a plate that its cut can reach, with room to spare: what
    // a step that turns or paints a plate copies, so that the reader sees its usual margin.
    static cv::Rect Surroundings(const cv::Rect& box, const cv::Size& picture);
    // Each row of a plate of two rows holds one kind of character (letters over digits, as a
    // rule): a letter read among digits, or a digit among letters, becomes its look-alike of
    // the row's kind (O and 0, I and 1, ...) when the network gave the look-alike a fair
    // chance. A plate without a template has nothing else to tell a round O from a 0.
    static void OneKindARow(Text& text);
    // The most probable character of allowed at a character's column, with its confidence.
    static char Best(const std::array<float, kClasses>& column, const std::string& allowed,
                     int* confidence);

  private:
    // The upper and lower rows of a plate of two rows.
    static std::array<cv::Rect, 2> Rows(const cv::Rect& box);
    static cv::Mat Squeezed(const cv::Mat& grey, const cv::Rect& box, const cv::Size& size);
    Text Decode(const cv::Mat& squeezed);
    // The reading most of texts agree on, the likeliest of those tied.
    static Text MostAgreed(std::vector<Text> texts);
    // True when wide (read from wideCut) holds narrow's characters with one or two more beside
    // them, each of which the reader is sure of and stands on light ground: the plate goes on
    // past narrow's box. A frame, a bolt or the car beside a whole plate seldom reads as a
    // sure character, and a European plate's band is dark.
    static bool Extends(const Text& wide, const cv::Mat& wideCut, const Text& narrow);
    // True when the character at a column of a squeezed cut stands on light ground, as the
    // characters of a plate do; the band of a European plate or a frame is dark all over.
    static bool OnLightGround(const cv::Mat& squeezed, int column);
    // Squeezed cuts read in one pass of the network; an empty cut reads as nothing.
    std::vector<Text> DecodeAll(const std::vector<cv::Mat>& squeezed);
    static Text DecodeColumns(const cv::Mat& scores, int index);

    cv::dnn::Net net_;
    bool ready_ = false;
};
