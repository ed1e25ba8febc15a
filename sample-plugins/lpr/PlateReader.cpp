#include "PlateReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include <opencv2/imgproc.hpp>

#include "OnnxNetwork.h"

namespace {

const cv::Size kInput(128, 32);

// The cut the network was trained on: the box with 12% of its width and of its height
// around it.
cv::Rect Cut(const cv::Rect& box, const cv::Size& picture) {
    const int mx = static_cast<int>(box.width * 0.12);
    const int my = static_cast<int>(box.height * 0.12);
    const cv::Rect around(box.x - mx, box.y - my, box.width + 2 * mx, box.height + 2 * my);
    return around & cv::Rect(cv::Point(0, 0), picture);
}

int Percent(float p) {
    return std::clamp(static_cast<int>(std::lround(p * 100.0f)), 0, 100);
}

// Letters and the digits they are taken for, and the share of a character's own probability
// its look-alike needs to be taken instead in a row of the other kind.
constexpr std::array<std::pair<char, char>, 6> kLookAlikes = {
    {{'O', '0'}, {'I', '1'}, {'Z', '2'}, {'S', '5'}, {'G', '6'}, {'B', '8'}}};
constexpr float kFairChance = 0.2f;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The look-alike of c of the other kind, or '\0'.
char LookAlike(char c) {
    for (const auto& [letter, digit] : kLookAlikes) {
        if (c == letter)
            return digit;
        if (c == digit)
            return letter;
    }
    return '\0';
}

}  // namespace

cv::Rect PlateReader::Surroundings(const cv::Rect& box, const cv::Size& picture) {
    const int margin = std::max(box.width, box.height) / 4;
    return cv::Rect(box.x - margin, box.y - margin, box.width + 2 * margin,
                    box.height + 2 * margin) &
           cv::Rect(cv::Point(0, 0), picture);
}

std::array<cv::Rect, 2> PlateReader::Rows(const cv::Rect& box) {
    // Each a little more than half the plate: rows are seldom split evenly.
    const int rowHeight = box.height * 56 / 100;
    return {cv::Rect(box.x, box.y, box.width, rowHeight),
            cv::Rect(box.x, box.br().y - rowHeight, box.width, rowHeight)};
}

PlateReader::PlateReader(const std::string& modelFile)
    : net_(LoadOnnxNetwork(modelFile)), ready_(!net_.empty()) {}

cv::Mat PlateReader::Squeezed(const cv::Mat& grey, const cv::Rect& box, const cv::Size& size) {
    const cv::Rect cut = Cut(box, grey.size());
    if (cut.width < 2 || cut.height < 2)
        return cv::Mat();
    cv::Mat squeezed;
    cv::resize(grey(cut), squeezed, size, 0, 0,
               cut.height > size.height ? cv::INTER_AREA : cv::INTER_LINEAR);
    return squeezed;
}

PlateReader::Text PlateReader::Read(const cv::Mat& grey, const cv::Rect& box, int rows) {
    if (!ready_)
        return Text();
    if (rows != 2)
        return Decode(Squeezed(grey, box, kInput));
    // Two rows side by side, the upper one first.
    const auto [upperRow, lowerRow] = Rows(box);
    const cv::Size half(kInput.width / 2, kInput.height);
    const cv::Mat upper = Squeezed(grey, upperRow, half);
    const cv::Mat lower = Squeezed(grey, lowerRow, half);
    if (upper.empty() || lower.empty())
        return Text();
    cv::Mat both;
    cv::hconcat(upper, lower, both);
    Text text = Decode(both);
    text.rows = 2;
    text.upperRow = static_cast<size_t>(
        std::count_if(text.at.begin(), text.at.end(), [](int at) { return at < kColumns / 2; }));
    return text;
}

PlateReader::Text PlateReader::ReadAcrossCuts(const cv::Mat& grey, const cv::Rect& box) {
    if (!ready_)
        return Text();
    std::vector<Text> texts{Decode(Squeezed(grey, box, kInput))};
    // Most boxes are no plate at all: they are not worth two more cuts.
    if (texts.front().characters.size() < kFewestCharacters)
        return std::move(texts.front());
    const int unit = box.width / 32;
    const cv::Mat wideCut = Squeezed(
        grey, cv::Rect(box.x - 8 * unit, box.y, box.width + 16 * unit, box.height), kInput);
    std::vector<Text> others = DecodeAll(
        {Squeezed(grey, cv::Rect(box.x - 2 * unit, box.y, box.width + 4 * unit, box.height),
                  kInput),
         Squeezed(grey, cv::Rect(box.x + unit, box.y, box.width - 2 * unit, box.height), kInput),
         wideCut});
    Text wide = std::move(others.back());
    others.pop_back();
    std::move(others.begin(), others.end(), std::back_inserter(texts));
    Text agreed = MostAgreed(std::move(texts));
    // The three cuts agree just as well on a box that clips an end of a wide plate (the
    // detector's boxes of plates four to five times as wide as high often do).
    return Extends(wide, wideCut, agreed) ? wide : agreed;
}

bool PlateReader::OnLightGround(const cv::Mat& squeezed, int column) {
    const int scale = squeezed.cols / kColumns;
    const cv::Rect strip =
        cv::Rect(column * scale - scale, squeezed.rows / 4, scale * 3, squeezed.rows / 2) &
        cv::Rect(0, 0, squeezed.cols, squeezed.rows);
    cv::Mat dark;
    cv::threshold(squeezed, dark, 0, 1, cv::THRESH_BINARY_INV | cv::THRESH_OTSU);
    const double share = cv::sum(dark(strip))[0] / std::max(1, strip.area());
    return share < kDarkestGround;
}

bool PlateReader::Extends(const Text& wide, const cv::Mat& wideCut, const Text& narrow) {
    const size_t count = narrow.characters.size();
    const size_t at = wide.characters.find(narrow.characters);
    if (count == 0 || at == std::string::npos || wide.characters.size() <= count ||
        wide.characters.size() > count + kMostCharactersBeyond)
        return false;
    for (size_t k = 0; k < wide.characters.size(); ++k)
        if ((k < at || k >= at + count) &&
            (wide.confidence[k] < kSureBeyond || !OnLightGround(wideCut, wide.at[k])))
            return false;
    return true;
}

PlateReader::Text PlateReader::MostAgreed(std::vector<Text> texts) {
    size_t best = 0;
    long bestVotes = 0;
    for (size_t i = 0; i < texts.size(); ++i) {
        const long votes = std::count_if(texts.begin(), texts.end(), [&](const Text& t) {
            return t.characters == texts[i].characters;
        });
        if (votes > bestVotes || (votes == bestVotes && texts[i].logScore > texts[best].logScore)) {
            best = i;
            bestVotes = votes;
        }
    }
    return std::move(texts[best]);
}

PlateReader::Text PlateReader::ReadRowsApart(const cv::Mat& grey, const cv::Rect& box) {
    if (!ready_)
        return Text();
    const auto [upperRow, lowerRow] = Rows(box);
    std::vector<Text> rows =
        DecodeAll({Squeezed(grey, upperRow, kInput), Squeezed(grey, lowerRow, kInput)});
    Text text = std::move(rows[0]);
    const Text& lower = rows[1];
    text.upperRow = text.characters.size();
    text.characters += lower.characters;
    text.confidence.insert(text.confidence.end(), lower.confidence.begin(), lower.confidence.end());
    text.columns.insert(text.columns.end(), lower.columns.begin(), lower.columns.end());
    text.at.insert(text.at.end(), lower.at.begin(), lower.at.end());
    text.logScore = (text.logScore + lower.logScore) / 2;  // on the scale of one reading
    text.rows = 2;
    return text;
}

PlateReader::Text PlateReader::Decode(const cv::Mat& squeezed) {
    return std::move(DecodeAll({squeezed}).front());
}

std::vector<PlateReader::Text> PlateReader::DecodeAll(const std::vector<cv::Mat>& squeezed) {
    std::vector<Text> texts(squeezed.size());
    std::vector<cv::Mat> cuts;
    for (const cv::Mat& cut : squeezed)
        if (!cut.empty())
            cuts.push_back(cut);
    if (cuts.empty())
        return texts;
    // One pass for all cuts: the network's fixed cost is paid once.
    net_.setInput(
        cv::dnn::blobFromImages(cuts, 2.0 / 255.0, cv::Size(), cv::Scalar(127.5), false, false));
    const cv::Mat out = net_.forward();  // N x 37 x 1 x 32
    int n = 0;
    for (size_t i = 0; i < squeezed.size(); ++i)
        if (!squeezed[i].empty())
            texts[i] = DecodeColumns(out, n++);
    return texts;
}

PlateReader::Text PlateReader::DecodeColumns(const cv::Mat& out, int n) {
    Text text;
    const int columns = out.size[3];
    int last = 0;
    for (int t = 0; t < columns; ++t) {
        std::array<float, kClasses> p{};
        float top = -1e30f;
        for (int c = 0; c < kClasses; ++c) {
            p[static_cast<size_t>(c)] = out.ptr<float>(n, c, 0)[t];
            top = std::max(top, p[static_cast<size_t>(c)]);
        }
        float sum = 0.0f;
        for (float& v : p) {
            v = std::exp(v - top);
            sum += v;
        }
        int best = 0;
        for (int c = 0; c < kClasses; ++c) {
            p[static_cast<size_t>(c)] /= sum;
            if (p[static_cast<size_t>(c)] > p[static_cast<size_t>(best)])
                best = c;
        }
        text.logScore += std::log(std::max(p[static_cast<size_t>(best)], 1e-6f));
        if (best != 0 && best == last) {
            // The same character over more columns: keep its strongest column.
            if (p[static_cast<size_t>(best)] > text.columns.back()[static_cast<size_t>(best)]) {
                text.columns.back() = p;
                text.at.back() = t;
                text.confidence.back() = Percent(p[static_cast<size_t>(best)]);
            }
        } else if (best != 0) {
            text.characters += kAlphabet[best - 1];
            text.confidence.push_back(Percent(p[static_cast<size_t>(best)]));
            text.columns.push_back(p);
            text.at.push_back(t);
        }
        last = best;
    }
    return text;
}

void PlateReader::OneKindARow(Text& text) {
    if (text.rows != 2 || text.upperRow > text.characters.size())
        return;
    const auto index = [](char c) {
        return static_cast<size_t>(std::strchr(kAlphabet, c) - kAlphabet) + 1;
    };
    const auto settle = [&](size_t from, size_t to) {
        // The row's kind is that of its characters without a look-alike, when they agree and
        // at least half the row is already of that kind.
        size_t digits = 0;
        size_t sureDigits = 0;
        size_t sureLetters = 0;
        for (size_t k = from; k < to; ++k) {
            const char c = text.characters[k];
            digits += IsDigit(c) ? 1 : 0;
            if (LookAlike(c) == '\0')
                (IsDigit(c) ? sureDigits : sureLetters) += 1;
        }
        const size_t count = to - from;
        if (count < 3 || (sureDigits > 0) == (sureLetters > 0))
            return;
        const bool digitRow = sureDigits > 0;
        if ((digitRow ? digits : count - digits) * 2 < count)
            return;
        for (size_t k = from; k < to; ++k) {
            const char c = text.characters[k];
            const char other = LookAlike(c);
            if (IsDigit(c) == digitRow || other == '\0')
                continue;
            const float p = text.columns[k][index(other)];
            if (p >= kFairChance * text.columns[k][index(c)]) {
                text.characters[k] = other;
                text.confidence[k] = Percent(p);
            }
        }
    };
    settle(0, text.upperRow);
    settle(text.upperRow, text.characters.size());
}

char PlateReader::Best(const std::array<float, kClasses>& column, const std::string& allowed,
                       int* confidence) {
    char best = '\0';
    float top = -1.0f;
    for (const char c : allowed) {
        const char* at = std::strchr(kAlphabet, c);
        if (at == nullptr || c == '\0')
            continue;
        const float p = column[static_cast<size_t>(at - kAlphabet) + 1];
        if (p > top) {
            top = p;
            best = c;
        }
    }
    if (confidence != nullptr)
        *confidence = best == '\0' ? 0 : Percent(top);
    return best;
}
