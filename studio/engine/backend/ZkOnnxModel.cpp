#include "ZkOnnxModel.h"

#include "ZkModelLayout.h"

#include <opencv2/core/utils/logger.hpp>
#include <opencv2/dnn.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <set>
#include <vector>

namespace zk::engine {

namespace {

using Kind = ModelProblem::Kind;

// OpenCV prints what it then throws; it comes to the user by another way.
void quietOpenCv()
{
    static const bool isQuiet = [] {
        if (!std::getenv("OPENCV_LOG_LEVEL"))
            cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
        return true;
    }();
    (void)isQuiet;
}

// The innermost of OpenCV's messages, which are nested: "> Node [Op@domain]:(name) parse error:
// OpenCV(4.6.0) file:106: error: (-5:Bad argument) what in function 'f'".
std::string reasonIn(const std::string &message)
{
    constexpr std::size_t none = std::string::npos;
    const std::size_t mark = message.rfind("error: (");
    const std::size_t code = mark == none ? none : message.find(") ", mark);
    const std::size_t from = code == none ? 0 : code + 2;
    const std::size_t to = std::min(message.find(" in function", from), message.find('\n', from));
    return message.substr(from, to == none ? none : to - from);
}

std::string operatorIn(const std::string &message)
{
    const std::size_t from = message.find("Node [");
    const std::size_t to = message.find('@', from);
    if (from == std::string::npos || to == std::string::npos)
        return {};
    return message.substr(from + 6, to - from - 6);
}

ModelProblem problemOf(Kind kind, const std::exception &exception)
{
    const std::string message = exception.what();
    return {kind, operatorIn(message), reasonIn(message), {}};
}

std::string rangeText(double least, double most)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3g .. %.3g", least, most);
    return text;
}

void drawDisc(cv::Mat *picture, double value)
{
    const int radius = std::max(1, std::min(picture->cols, picture->rows) / 4);
    const cv::Point middle(picture->cols / 2, picture->rows / 2);
    cv::circle(*picture, middle, radius, cv::Scalar::all(value), cv::FILLED);
}

// A scene that every network should cope with: a light disc on a ramp, whose pixels are neither black
// nor white.
cv::Mat drawnPicture(const cv::Size &size, int channels)
{
    cv::Mat picture(size, CV_MAKETYPE(CV_32F, channels));
    for (int y = 0; y < size.height; ++y) {
        float *row = picture.ptr<float>(y);
        for (int x = 0; x < size.width; ++x) {
            const float ramp = 0.2f + 0.4f * float(x) / float(size.width);
            for (int c = 0; c < channels; ++c)
                row[x * channels + c] = ramp + 0.1f * float(c);
        }
    }
    drawDisc(&picture, 0.9);
    return picture;
}

cv::Mat drawnMask(const cv::Size &size)
{
    cv::Mat mask = cv::Mat::zeros(size, CV_32F);
    drawDisc(&mask, 1.0);
    return mask;
}

std::vector<std::int64_t> shapeOf(const cv::Mat &blob)
{
    std::vector<std::int64_t> shape;
    for (int i = 0; i < blob.dims; ++i)
        shape.push_back(blob.size[i]);
    return shape;
}

// Planes one after the other to pixels.
cv::Mat pictureOf(const cv::Mat &blob, const cv::Size &size, int channels)
{
    std::vector<cv::Mat> planes;
    for (int c = 0; c < channels; ++c)
        planes.emplace_back(size, CV_32F, const_cast<float *>(blob.ptr<float>(0, c)));
    cv::Mat picture;
    cv::merge(planes, picture);
    return picture;
}

} // namespace

struct OnnxModel::Private
{
    ModelProblem read(const char *bytes, std::size_t size);
    ModelProblem tryOut() const;
    cv::Mat forward(const Pictures &pictures) const;
    cv::Mat checked(const cv::Mat &blob, const cv::Size &size, ModelProblem *problem) const;

    const ModelLayout *layout = nullptr;
    std::set<std::string> inputs;
    cv::Size size;
    mutable std::mutex mutex; // of the network, which holds the pictures that it is run on
    mutable cv::dnn::Net net;
};

ModelProblem OnnxModel::Private::read(const char *bytes, std::size_t byteCount)
{
    OnnxFile file;
    if (!readOnnxFile(bytes, byteCount, &file))
        return {Kind::NotOnnx, {}, {}, {}};
    layout = layoutOf(file);
    if (!layout)
        return {Kind::UnknownRole, {}, namesOf(file.inputs), {}};
    if (const ModelProblem problem = checkLayout(file, *layout))
        return problem;
    for (const OnnxTensor &input : file.inputs)
        inputs.insert(input.name);
    size = pictureSize(file);
    try {
        net = cv::dnn::readNetFromONNX(bytes, byteCount);
        net.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
        net.setPreferableTarget(cv::dnn::DNN_TARGET_CPU);
    } catch (const std::exception &exception) {
        return problemOf(Kind::Unsupported, exception);
    }
    return {};
}

ModelProblem OnnxModel::Private::tryOut() const
{
    const cv::Size drawn = size.empty() ? cv::Size(96, 64) : size;
    Pictures pictures;
    for (const std::string &name : inputs) {
        const int channels = layout->input(name)->channels;
        pictures[name] = channels == 1 ? drawnMask(drawn) : drawnPicture(drawn, channels);
    }
    ModelProblem problem;
    try {
        checked(forward(pictures), drawn, &problem);
    } catch (const std::exception &exception) {
        return problemOf(Kind::CannotRun, exception);
    }
    return problem;
}

cv::Mat OnnxModel::Private::forward(const Pictures &pictures) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (const std::string &name : inputs)
        net.setInput(cv::dnn::blobFromImage(pictures.at(name)), name);
    return net.forward(layout->output).clone();
}

cv::Mat OnnxModel::Private::checked(const cv::Mat &blob,
                                    const cv::Size &expected,
                                    ModelProblem *problem) const
{
    const std::vector<std::int64_t> shape {
        1, layout->outputChannels, expected.height, expected.width};
    if (shapeOf(blob) != shape) {
        *problem = {Kind::WrongShape, layout->output, shapeText(shapeOf(blob)), shapeText(shape)};
        return {};
    }
    const cv::Mat values(1, int(blob.total()), blob.type(), blob.data);
    if (blob.type() != CV_32F || !cv::checkRange(values)) {
        *problem = {Kind::NotFinite, layout->output, {}, {}};
        return {};
    }
    double least = 0.0, most = 0.0;
    cv::minMaxLoc(values, &least, &most);
    if (least < -layout->tolerance || most > 1.0 + layout->tolerance) {
        *problem = {Kind::OutOfRange, layout->output, rangeText(least, most), rangeText(0, 1)};
        return {};
    }
    const cv::Mat picture = pictureOf(blob, expected, layout->outputChannels);
    return cv::max(cv::min(picture, cv::Scalar::all(1)), cv::Scalar::all(0));
}

OnnxModel::OnnxModel()
    : d(std::make_unique<Private>())
{ }

OnnxModel::~OnnxModel() = default;

OnnxModelPtr OnnxModel::load(const char *bytes, std::size_t size, ModelProblem *problem)
{
    quietOpenCv();
    std::shared_ptr<OnnxModel> model;
    try {
        model.reset(new OnnxModel);
        *problem = model->d->read(bytes, size);
        if (!*problem)
            *problem = model->d->tryOut();
    } catch (const std::exception &exception) { // out of memory, above all
        *problem = problemOf(Kind::Unsupported, exception);
    }
    return *problem ? nullptr : model;
}

EngineRole OnnxModel::role() const
{
    return d->layout->role;
}

bool OnnxModel::takes(const char *input) const
{
    return d->inputs.count(input) > 0;
}

cv::Size OnnxModel::fixedSize() const
{
    return d->size;
}

cv::Mat OnnxModel::run(const Pictures &pictures, ModelProblem *problem) const
{
    *problem = {};
    try {
        const cv::Size size = pictures.at(tensor::image).size();
        return d->checked(d->forward(pictures), size, problem);
    } catch (const std::exception &exception) {
        *problem = problemOf(Kind::CannotRun, exception);
    }
    return {};
}

} // namespace zk::engine
