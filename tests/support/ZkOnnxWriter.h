// Writes small networks as ONNX files, so that no test needs one from elsewhere.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace zk::test {

// Protocol buffer fields, one after the other.
class ProtoMessage
{
public:
    ProtoMessage &number(int field, std::uint64_t value)
    {
        tag(field, 0);
        varint(value);
        return *this;
    }
    ProtoMessage &bytes(int field, const std::string &value)
    {
        tag(field, 2);
        varint(value.size());
        m_bytes += value;
        return *this;
    }
    ProtoMessage &message(int field, const ProtoMessage &value)
    {
        return bytes(field, value.m_bytes);
    }
    const std::string &str() const { return m_bytes; }

private:
    void tag(int field, int wire) { varint(std::uint64_t(field) << 3 | std::uint64_t(wire)); }
    void varint(std::uint64_t value)
    {
        for (; value > 127; value >>= 7)
            m_bytes += char((value & 127) | 128);
        m_bytes += char(value);
    }

    std::string m_bytes;
};

// A graph of operators of ONNX's operator set 11. Sizes of 0 are dynamic.
class OnnxWriter
{
public:
    enum ElementType { Float = 1, Byte = 2, Half = 10 };
    using Shape = std::vector<int>;

    OnnxWriter &input(const std::string &name, const Shape &shape, ElementType type = Float)
    {
        m_graph.message(11, tensorInfo(name, shape, type));
        return *this;
    }
    OnnxWriter &output(const std::string &name, const Shape &shape, ElementType type = Float)
    {
        m_graph.message(12, tensorInfo(name, shape, type));
        return *this;
    }
    OnnxWriter &
    constant(const std::string &name, const Shape &shape, const std::vector<float> &values)
    {
        ProtoMessage tensor;
        for (const int length : shape)
            tensor.number(1, std::uint64_t(length));
        tensor.number(2, Float).bytes(8, name);
        std::string raw(values.size() * sizeof(float), '\0');
        std::memcpy(&raw[0], values.data(), raw.size()); // little endian, as all that tests run on
        m_graph.message(5, tensor.bytes(9, raw));
        return *this;
    }
    // The node is named after its output.
    OnnxWriter &node(const std::string &type,
                     const std::vector<std::string> &inputs,
                     const std::string &output,
                     const std::vector<ProtoMessage> &attributes = {})
    {
        ProtoMessage node;
        for (const std::string &name : inputs)
            node.bytes(1, name);
        node.bytes(2, output).bytes(3, "node_" + output).bytes(4, type);
        for (const ProtoMessage &attribute : attributes)
            node.message(5, attribute);
        m_graph.message(1, node);
        return *this;
    }
    static ProtoMessage integers(const std::string &name, const std::vector<int> &values)
    {
        ProtoMessage attribute;
        attribute.bytes(1, name);
        for (const int value : values)
            attribute.number(8, std::uint64_t(std::int64_t(value)));
        return attribute.number(20, 7);
    }

    static ProtoMessage integer(const std::string &name, int value)
    {
        return ProtoMessage().bytes(1, name).number(3, std::uint64_t(value)).number(20, 2);
    }

    // Every pixel of the output is a linear function of the inputs' pixels there, or with a kernel of 3 of
    // those around it; the weights are those of a convolution over the inputs one after the other.
    struct Linear
    {
        std::vector<std::pair<std::string, int>> inputs; // with their channels
        std::string output;
        int channels = 1;
        std::vector<float> weights;
        float bias = 0.0f;
        bool isSigmoid = true;
        int width = 0;
        int height = 0;
        int kernel = 1;
    };
    static OnnxWriter linear(const Linear &network)
    {
        OnnxWriter writer;
        std::vector<std::string> names;
        int count = 0;
        for (const auto &[name, channels] : network.inputs) {
            writer.input(name, {1, channels, network.height, network.width});
            names.push_back(name);
            count += channels;
        }
        const int k = network.kernel;
        const std::vector<float> biases(std::size_t(network.channels), network.bias);
        writer.constant("weights", {network.channels, count, k, k}, network.weights);
        writer.constant("biases", {network.channels}, biases);
        writer.output(network.output, {1, network.channels, network.height, network.width});
        const std::string sum = network.isSigmoid ? "sum" : network.output;
        writer.node("Concat", names, "all", {integer("axis", 1)});
        writer.node(
            "Conv",
            {"all", "weights", "biases"},
            sum,
            {integers("kernel_shape", {k, k}), integers("pads", {k / 2, k / 2, k / 2, k / 2})});
        if (network.isSigmoid)
            writer.node("Sigmoid", {sum}, network.output);
        return writer;
    }

    std::string file() const
    {
        ProtoMessage graph = m_graph;
        graph.bytes(2, "test");
        return ProtoMessage()
            .number(1, 6)
            .message(8, ProtoMessage().bytes(1, "").number(2, 11))
            .message(7, graph)
            .str();
    }

private:
    static ProtoMessage tensorInfo(const std::string &name, const Shape &shape, ElementType type)
    {
        ProtoMessage dimensions;
        for (const int length : shape) {
            dimensions.message(1,
                               length > 0 ? ProtoMessage().number(1, std::uint64_t(length))
                                          : ProtoMessage().bytes(2, "size"));
        }
        const ProtoMessage tensor = ProtoMessage().number(1, type).message(2, dimensions);
        return ProtoMessage().bytes(1, name).message(2, ProtoMessage().message(1, tensor));
    }

    ProtoMessage m_graph;
};

} // namespace zk::test
