#include "ZkOnnxFile.h"

#include <algorithm>

namespace zk::engine {

namespace {

// One message of a protocol buffer. Every read is checked: the file may be anything.
class ProtoReader
{
public:
    ProtoReader(const char *bytes, std::size_t size)
        : m_at(bytes)
        , m_end(bytes + size)
    { }

    // Goes on to the next field. False at the end, and when the bytes are no message.
    bool next()
    {
        std::uint64_t tag = 0;
        if (m_at == m_end || !readVarint(&tag))
            return false;
        m_field = tag >> 3;
        m_kind = Kind::Other;
        switch (tag & 7) {
        case 0:
            m_kind = Kind::Number;
            return readVarint(&m_number);
        case 1:
            return skip(8);
        case 2:
            m_kind = Kind::Message;
            return readVarint(&m_number) && skip(m_number);
        case 5:
            return skip(4);
        default:
            return fail();
        }
    }
    bool hasFailed() const { return m_hasFailed; }

    bool isNumber(std::uint64_t field) const { return m_field == field && m_kind == Kind::Number; }
    bool isMessage(std::uint64_t field) const
    {
        return m_field == field && m_kind == Kind::Message;
    }
    std::uint64_t number() const { return m_number; }
    std::string text() const { return {m_at - m_number, std::size_t(m_number)}; }
    ProtoReader message() const { return {m_at - m_number, std::size_t(m_number)}; }

private:
    enum class Kind { Number, Message, Other }; // of other ones nothing is read

    bool fail()
    {
        m_hasFailed = true;
        return false;
    }
    bool skip(std::uint64_t bytes)
    {
        if (bytes > std::uint64_t(m_end - m_at))
            return fail();
        m_at += bytes;
        return true;
    }
    bool readVarint(std::uint64_t *value)
    {
        *value = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (m_at == m_end)
                return fail();
            const auto byte = static_cast<unsigned char>(*m_at++);
            *value |= std::uint64_t(byte & 127) << shift;
            if (byte < 128)
                return true;
        }
        return fail();
    }

    const char *m_at;
    const char *m_end;
    std::uint64_t m_field = 0;
    std::uint64_t m_number = 0; // of a message: how many bytes it has; they end at m_at
    Kind m_kind = Kind::Other;
    bool m_hasFailed = false;
};

std::int64_t lengthOf(ProtoReader dimension)
{
    std::int64_t length = 0;
    while (dimension.next()) {
        if (dimension.isNumber(1))
            length = std::int64_t(dimension.number());
    }
    return std::max<std::int64_t>(0, length);
}

void readTensorType(ProtoReader type, OnnxTensor *tensor)
{
    while (type.next()) {
        if (type.isNumber(1))
            tensor->elementType = int(type.number());
        if (!type.isMessage(2))
            continue;
        ProtoReader shape = type.message();
        while (shape.next()) {
            if (shape.isMessage(1))
                tensor->shape.push_back(lengthOf(shape.message()));
        }
    }
}

OnnxTensor readTensor(ProtoReader info)
{
    OnnxTensor tensor;
    while (info.next()) {
        if (info.isMessage(1))
            tensor.name = info.text();
        if (!info.isMessage(2))
            continue;
        ProtoReader type = info.message();
        while (type.next()) {
            if (type.isMessage(1))
                readTensorType(type.message(), &tensor);
        }
    }
    return tensor;
}

std::string constantName(ProtoReader tensor)
{
    std::string name;
    while (tensor.next()) {
        if (tensor.isMessage(8))
            name = tensor.text();
    }
    return name;
}

// True when there is an operator in it.
bool readGraph(ProtoReader graph, OnnxFile *file)
{
    std::set<std::string> constants;
    bool hasOperator = false;
    while (graph.next()) {
        if (graph.isMessage(1)) {
            hasOperator = true;
            ProtoReader node = graph.message();
            while (node.next()) {
                if (node.isMessage(1))
                    file->used.insert(node.text());
            }
        } else if (graph.isMessage(5)) {
            constants.insert(constantName(graph.message()));
        } else if (graph.isMessage(11)) {
            file->inputs.push_back(readTensor(graph.message()));
        } else if (graph.isMessage(12)) {
            file->outputs.push_back(readTensor(graph.message()));
        }
    }
    const auto isConstant = [&](const OnnxTensor &input) {
        return constants.count(input.name) > 0;
    };
    file->inputs.erase(std::remove_if(file->inputs.begin(), file->inputs.end(), isConstant),
                       file->inputs.end());
    return hasOperator && !graph.hasFailed();
}

const OnnxTensor *find(const std::vector<OnnxTensor> &tensors, const std::string &name)
{
    const auto it = std::find_if(tensors.begin(), tensors.end(), [&](const OnnxTensor &tensor) {
        return tensor.name == name;
    });
    return it == tensors.end() ? nullptr : &*it;
}

} // namespace

const OnnxTensor *OnnxFile::input(const std::string &name) const
{
    return find(inputs, name);
}

const OnnxTensor *OnnxFile::output(const std::string &name) const
{
    return find(outputs, name);
}

bool readOnnxFile(const char *bytes, std::size_t size, OnnxFile *file)
{
    ProtoReader model(bytes, size);
    bool hasNetwork = false;
    while (model.next()) {
        if (model.isMessage(7))
            hasNetwork = readGraph(model.message(), file);
    }
    return hasNetwork && !model.hasFailed();
}

} // namespace zk::engine
