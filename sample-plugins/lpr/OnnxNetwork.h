#pragma once
#include <string>

#include <opencv2/dnn.hpp>

// A trained network from its ONNX file, to run on the CPU with OpenCV's own back end. An empty
// network when the file is missing or cannot be read.
inline cv::dnn::Net LoadOnnxNetwork(const std::string& file) {
    try {
        cv::dnn::Net net = cv::dnn::readNetFromONNX(file);
        net.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
        net.setPreferableTarget(cv::dnn::DNN_TARGET_CPU);
        return net;
    } catch (const cv::Exception&) {
        return cv::dnn::Net();
    }
}
