#include "PlateOcr.h"

#include <cctype>

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>
#include <opencv2/imgproc.hpp>

namespace {
constexpr int kReadingHeight = 32;  // characters are scaled to this height for reading
constexpr int kBorder = 12;
constexpr const char* kPlateCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
}  // namespace

PlateOcr::PlateOcr() : api_(std::make_unique<tesseract::TessBaseAPI>()) {
    ready_ = api_->Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) == 0;
    if (!ready_)
        return;
    api_->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    api_->SetVariable("load_system_dawg", "0");
    api_->SetVariable("load_freq_dawg", "0");
    api_->SetVariable("debug_file", "/dev/null");
}

PlateOcr::~PlateOcr() {
    if (ready_)
        api_->End();
}

cv::Mat PlateOcr::Prepared(const cv::Mat& grey, int charHeight) {
    cv::Mat prepared;
    const double factor = kReadingHeight / static_cast<double>(charHeight);
    cv::resize(grey, prepared, cv::Size(), factor, factor,
               factor > 1.0 ? cv::INTER_CUBIC : cv::INTER_AREA);
    cv::threshold(prepared, prepared, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    cv::copyMakeBorder(prepared, prepared, kBorder, kBorder, kBorder, kBorder, cv::BORDER_CONSTANT,
                       cv::Scalar(255));
    return prepared;
}

char PlateOcr::ReadCharacter(const cv::Mat& glyph, int charHeight, const std::string& allowed,
                             int* confidence) {
    *confidence = 0;
    if (!ready_ || glyph.empty() || charHeight <= 0)
        return '\0';
    const cv::Mat prepared = Prepared(glyph, charHeight);
    api_->SetPageSegMode(tesseract::PSM_SINGLE_CHAR);
    api_->SetVariable("tessedit_char_whitelist", allowed.c_str());
    api_->SetImage(prepared.data, prepared.cols, prepared.rows, 1, static_cast<int>(prepared.step));
    char result = '\0';
    if (api_->Recognize(nullptr) == 0) {
        std::unique_ptr<tesseract::ResultIterator> symbols(api_->GetIterator());
        if (symbols) {
            const std::unique_ptr<char[]> symbol(symbols->GetUTF8Text(tesseract::RIL_SYMBOL));
            if (symbol && allowed.find(symbol[0]) != std::string::npos) {
                result = symbol[0];
                *confidence = static_cast<int>(symbols->Confidence(tesseract::RIL_SYMBOL) + 0.5f);
            }
        }
    }
    api_->Clear();
    return result;
}

PlateOcr::Text PlateOcr::Read(const cv::Mat& plate, int charHeight) {
    Text text;
    if (!ready_ || plate.empty() || charHeight <= 0)
        return text;
    const cv::Mat prepared = Prepared(plate, charHeight);
    api_->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    api_->SetVariable("tessedit_char_whitelist", kPlateCharacters);
    api_->SetImage(prepared.data, prepared.cols, prepared.rows, 1, static_cast<int>(prepared.step));
    if (api_->Recognize(nullptr) != 0)
        return text;
    std::unique_ptr<tesseract::ResultIterator> symbols(api_->GetIterator());
    if (!symbols)
        return text;
    do {
        const std::unique_ptr<char[]> symbol(symbols->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!symbol)
            continue;
        for (const char* c = symbol.get(); *c != '\0'; ++c) {
            if (std::isalnum(static_cast<unsigned char>(*c)) == 0)
                continue;
            text.characters += *c;
            text.confidence.push_back(
                static_cast<int>(symbols->Confidence(tesseract::RIL_SYMBOL) + 0.5f));
        }
    } while (symbols->Next(tesseract::RIL_SYMBOL));
    api_->Clear();
    return text;
}
