// Changes an answer as JSON: nearly every change of single bytes makes something that is no JSON
// any more, and which the pass never looks into. Linked into a fuzz target, it takes part by its
// name.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

class JsonMutator
{
public:
    explicit JsonMutator(unsigned seed)
        : m_random(seed)
    {
    }

    /// A number from 0 to \a count - 1.
    qsizetype below(qsizetype count)
    {
        return std::uniform_int_distribution<qsizetype>(0, count - 1)(m_random);
    }

    /// \a document with one of its values changed, or a member or element of it come, gone or
    /// moved.
    QJsonDocument mutated(const QJsonDocument& document)
    {
        QJsonValue root =
            document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
        m_root = root;
        change(root, below(nodesIn(root)));
        return root.isArray() ? QJsonDocument(root.toArray()) : QJsonDocument(root.toObject());
    }

private:
    static qsizetype nodesIn(const QJsonValue& value)
    {
        qsizetype nodes = 1;
        if (value.isArray()) {
            const QJsonArray array = value.toArray();
            for (const QJsonValue& element : array)
                nodes += nodesIn(element);
        } else if (value.isObject()) {
            const QJsonObject object = value.toObject();
            for (const QJsonValue& member : object)
                nodes += nodesIn(member);
        }
        return nodes;
    }

    /// The node number \a index of \a value, counted as nodesIn() does; it has to have one.
    static QJsonValue nodeAt(const QJsonValue& value, qsizetype index)
    {
        if (index == 0)
            return value;
        --index;
        const QJsonArray children = value.isArray() ? value.toArray() : valuesOf(value.toObject());
        for (const QJsonValue& child : children) {
            const qsizetype nodes = nodesIn(child);
            if (index < nodes)
                return nodeAt(child, index);
            index -= nodes;
        }
        return {};
    }

    static QJsonArray valuesOf(const QJsonObject& object)
    {
        QJsonArray values;
        for (const QJsonValue& member : object)
            values.append(member);
        return values;
    }

    /// Changes the node number \a index of \a value.
    void change(QJsonValue& value, qsizetype index)
    {
        if (index == 0) {
            changeNode(value);
            return;
        }
        --index;
        if (value.isArray()) {
            QJsonArray array = value.toArray();
            qsizetype at = 0;
            for (qsizetype nodes = nodesIn(array.at(at)); index >= nodes;
                 nodes = nodesIn(array.at(at))) {
                index -= nodes;
                ++at;
            }
            QJsonValue element = array.at(at);
            change(element, index);
            array[at] = element;
            value = array;
            return;
        }
        QJsonObject object = value.toObject();
        auto member = object.begin();
        for (qsizetype nodes = nodesIn(member.value()); index >= nodes;
             nodes = nodesIn(member.value())) {
            index -= nodes;
            ++member;
        }
        QJsonValue inner = member.value();
        change(inner, index);
        object.insert(member.key(), inner);
        value = object;
    }

    void changeNode(QJsonValue& value)
    {
        if (value.isArray() && below(4) != 0)
            value = changed(value.toArray());
        else if (value.isObject() && below(4) != 0)
            value = changed(value.toObject());
        else if (value.isString() && below(2) == 0)
            value = changed(value.toString());
        else if (value.isDouble() && below(2) == 0)
            value = changed(value.toDouble());
        else
            value = otherValue();
    }

    QJsonArray changed(QJsonArray array)
    {
        const qsizetype at = array.isEmpty() ? 0 : below(array.size());
        switch (array.isEmpty() ? 3 : below(4)) {
        case 0:
            array.removeAt(at);
            break;
        case 1:
            array.insert(at, array.at(below(array.size())));
            break;
        case 2:
            array.append(array.takeAt(at));
            break;
        default:
            array.insert(at, otherValue());
        }
        return array;
    }

    QJsonObject changed(QJsonObject object)
    {
        const QStringList keys = object.keys();
        if (keys.isEmpty()) {
            object.insert(otherKey(), otherValue());
            return object;
        }
        const QString& key = keys[below(keys.size())];
        switch (below(4)) {
        case 0:
            object.remove(key);
            break;
        case 1:
            object.insert(otherKey(), object.take(key));
            break;
        case 2:
            object.insert(key, object.value(keys[below(keys.size())]));
            break;
        default:
            object.insert(otherKey(), otherValue());
        }
        return object;
    }

    QString changed(const QString& text)
    {
        const QByteArray before = text.toUtf8();
        QByteArray after(before.size() + 64, '\0');
        std::copy(before.begin(), before.end(), after.begin());
        const std::size_t size =
            LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(after.data()),
                             std::size_t(before.size()), std::size_t(after.size()));
        return QString::fromUtf8(after.first(qsizetype(size)));
    }

    double changed(double number)
    {
        switch (below(5)) {
        case 0:
            return -number;
        case 1:
            return number + 1;
        case 2:
            return number * 100;
        case 3:
            return number / 3;
        default:
            return double(below(4));
        }
    }

    /// A value that no shop should tell there, or one from elsewhere in the answer.
    QJsonValue otherValue()
    {
        static const QJsonArray odd {
            QJsonValue(),
            true,
            false,
            0,
            -0.0,
            1e308,
            5e-324,
            2147483648.0,
            -9223372036854775808.0,
            std::numeric_limits<double>::infinity(), // which becomes null
            "",
            "0",
            "-0.00",
            "19.0000",
            "0.005",
            "1e308",
            "nan",
            "-inf",
            "9999999999999999999999999999.99",
            "1,5",
            "%1 %2 %n %L1 %%",
            "a\";b\r\n\"\"c",
            QString(QChar(0xd800)) + QLatin1Char('x'),
            QString(QChar(0)),
            QString(300, QLatin1Char('7')),
            "2026-03-29T01:30:00",
            "2026-10-25T00:30:00Z",
            "0000-00-00T00:00:00",
            "99999-13-32T25:61:61",
            QJsonArray(),
            QJsonArray {QJsonArray {QJsonArray()}},
            QJsonObject(),
            QJsonObject {{"", QJsonObject()}},
        };
        if (below(2) == 0)
            return nodeAt(m_root, below(nodesIn(m_root)));
        return odd.at(below(odd.size()));
    }

    /// A key from elsewhere in the answer; sometimes one that separates cells and quotes.
    QString otherKey()
    {
        if (below(8) == 0)
            return QStringLiteral("a;\"b\"\n%1");
        for (int tries = 0; tries < 8; ++tries) {
            const QJsonValue node = nodeAt(m_root, below(nodesIn(m_root)));
            const QStringList keys = node.toObject().keys();
            if (!keys.isEmpty())
                return keys[below(keys.size())];
        }
        return QString(below(40), QLatin1Char('k'));
    }

    std::minstd_rand m_random;
    QJsonValue m_root;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed)
{
    JsonMutator mutator(seed);
    const QByteArray before(reinterpret_cast<const char*>(data), qsizetype(size));
    const QJsonDocument document = QJsonDocument::fromJson(before);
    // Bytes as well, now and then: keys that come twice and broken UTF-8 are not to be had
    // otherwise.
    if (document.isNull() || mutator.below(5) == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    const QByteArray after = mutator.mutated(document).toJson(QJsonDocument::Compact);
    if (after.isEmpty() || std::size_t(after.size()) > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(after.begin(), after.end(), data);
    return std::size_t(after.size());
}
