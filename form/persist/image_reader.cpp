#include "form/persist/image_reader.h"

#include "form/persist/ini_map.h"

#include <QBrush>
#include <QImage>
#include <QPalette>
#include <QtEndian>
#include <QTextFormat>

#include <algorithm>
#include <utility>

namespace mod_form_qt {

namespace {

// As they are written by streams of that version.
enum Type : quint32 {
    Map = 8,
    List = 9,
    Texts = 11,
    Hash = 28,
    Variant = 41,
    ByteArrays = 49,
    Font = 64,
    Brush = 66,
    Palette = 68,
    Polygon = 71,
    Region = 72,
    KeySequence = 75,
    Pen = 76,
    Format = 78,
    PolygonF = 86,
    Named = 1024,
};

constexpr qint64 textBytes = 4;
constexpr qint64 valueBytes = 5;
constexpr qint64 keyBytes = 4;
constexpr qint64 numberBytes = 8;
constexpr qint64 colorBytes = 11;
constexpr qint64 transformBytes = 9 * numberBytes;
constexpr quint32 maxNameBytes = 1000;

/// Types of the toolkit that are of a fixed size, or grow only with the bytes that are there.
bool isPlain(quint32 type)
{
    constexpr std::pair<quint32, quint32> ranges[] = {
        {1, 7}, // bool, numbers, QChar
        {10, 10}, // QString
        {12, 26}, // QByteArray to QPointF
        {30, 30}, // QUuid
        {32, 38}, // numbers
        {40, 40},   {44, 48}, // QRegularExpression, JSON
        {51, 55}, // nullptr, CBOR
        {65, 65}, // QPixmap
        {67, 67}, // QColor
        {69, 70}, // QIcon, QImage
        {73, 74}, // QBitmap, QCursor
        {77, 77}, // QTextLength
        {80, 85}, // matrices and vectors
        {87, 87}, // QColorSpace
        {121, 121}, // QSizePolicy
    };
    return std::any_of(std::begin(ranges), std::end(ranges), [type](const auto& range) {
        return type >= range.first && type <= range.second;
    });
}

/// A type that a template is made with. What the toolkit does not know is the program's own.
bool isPlainArgument(const QByteArray& name)
{
    const QMetaType type = QMetaType::fromName(name);
    const bool own = !type.isValid() || type.id() >= QMetaType::User;
    const bool plain = type.id() == QMetaType::QColor
        || (type.id() <= QMetaType::LastCoreType && isPlain(type.id()));
    return name.startsWith("QFlags<") || (!name.contains('<') && (own || plain));
}

bool isTemplate(const QMetaType& type, const char* name)
{
    return QByteArray(type.name()).startsWith(QByteArray(name) + '<');
}

/// Types that are written by their name and read by the stream.
bool isReadByName(const QMetaType& type)
{
    if (type.id() == QMetaType::Char16 || type.id() == QMetaType::Char32)
        return true;
    if (type.id() < QMetaType::User)
        return false;
    const QByteArray name = type.name();
    const qsizetype begin = name.indexOf('<');
    if (begin < 0 || isTemplate(type, "QFlags"))
        return true;
    const QList<QByteArray> arguments = name.mid(begin + 1).chopped(1).split(',');
    return std::all_of(arguments.cbegin(), arguments.cend(), isPlainArgument);
}

bool startsWithCount(const QMetaType& type)
{
    const auto templates = {"QList", "QVector", "QSet", "QMap", "QMultiMap", "QHash", "QMultiHash"};
    return std::any_of(templates.begin(), templates.end(),
                       [&](const char* name) { return isTemplate(type, name); });
}

bool fits(const QVariant& value, int depth);

template <typename Container>
bool allFit(const Container& values, int depth)
{
    return std::all_of(values.cbegin(), values.cend(),
                       [depth](const QVariant& value) { return fits(value, depth + 1); });
}

bool canWrite(const QTextFormat& format, int depth)
{
    const QMap<int, QVariant> properties = format.properties();
    // Streams of that version hold the first family only, and the toolkit takes it for granted.
    const auto families = properties.constFind(QTextFormat::FontFamilies);
    if (families != properties.cend() && families->toStringList().isEmpty())
        return false;
    return allFit(properties, depth);
}

bool fits(const QVariant& value, int depth)
{
    if (depth > maxValueDepth)
        return false;
    switch (value.typeId()) {
    case QMetaType::QVariantList:
        return allFit(*static_cast<const QVariantList*>(value.constData()), depth);
    case QMetaType::QVariantMap:
        return allFit(*static_cast<const QVariantMap*>(value.constData()), depth);
    case QMetaType::QVariantHash:
        return allFit(*static_cast<const QVariantHash*>(value.constData()), depth);
    case QMetaType::QVariant:
        return fits(*static_cast<const QVariant*>(value.constData()), depth + 1);
    case QMetaType::QVariantPair: {
        const auto* pair = static_cast<const QVariantPair*>(value.constData());
        return fits(pair->first, depth + 1) && fits(pair->second, depth + 1);
    }
    case QMetaType::QTextFormat:
        return canWrite(value.value<QTextFormat>(), depth);
    case QMetaType::QEasingCurve:
        return false;
    default:
        return value.typeId() < QMetaType::User || isReadByName(value.metaType());
    }
}

} // namespace

bool fitsImage(const QVariant& value)
{
    return fits(value, 0);
}

bool isRegionOfRectangles(QByteArrayView bytes)
{
    constexpr quint32 rectangles = 10;
    constexpr qsizetype headBytes = 8;
    constexpr qsizetype rectangleBytes = 16;
    if (bytes.isEmpty())
        return true;
    return bytes.size() >= headBytes && qFromBigEndian<quint32>(bytes.data()) == rectangles
        && qFromBigEndian<quint32>(bytes.data() + 4) * rectangleBytes == bytes.size() - headBytes;
}

ImageReader::ImageReader(QBuffer& buffer)
    : m_buffer(buffer)
    , m_stream(&buffer)
{
    m_stream.setVersion(imageStreamVersion);
}

/// \return  a number of elements of at least that many bytes each; 0, and the reading fails, if so
///          many bytes are not there
quint32 ImageReader::count(qint64 bytesEach)
{
    quint32 number = 0;
    m_stream >> number;
    if (failed() || number <= m_buffer.bytesAvailable() / bytesEach)
        return number;
    fail();
    return 0;
}

/// \return  the number that stands that many bytes ahead; 0 behind the end
quint32 ImageReader::peek(qint64 offset) const
{
    const QByteArray ahead = m_buffer.peek(offset + 4);
    return ahead.size() < offset + 4 ? 0 : qFromBigEndian<quint32>(ahead.constData() + offset);
}

/// \return  false if a number of elements stands that many bytes ahead which cannot all be there
bool ImageReader::holds(qint64 offset, qint64 bytesEach) const
{
    return peek(offset) <= (m_buffer.bytesAvailable() - offset) / bytesEach;
}

void ImageReader::skipHeader()
{
    quint32 type = 0;
    quint8 null = 0;
    m_stream >> type >> null;
}

template <typename Container>
QVariant ImageReader::entries(int depth)
{
    skipHeader();
    Container container;
    for (quint32 left = count(textBytes + valueBytes); left > 0 && !failed(); --left) {
        QString key;
        m_stream >> key;
        container.insert(key, value(depth + 1));
    }
    return container;
}

QVariant ImageReader::elements(int depth)
{
    skipHeader();
    QVariantList list;
    for (quint32 left = count(valueBytes); left > 0 && !failed(); --left)
        list.append(value(depth + 1));
    return list;
}

template <typename List, typename Text>
QVariant ImageReader::texts()
{
    skipHeader();
    List list;
    for (quint32 left = count(textBytes); left > 0 && !failed(); --left) {
        Text text;
        m_stream >> text;
        list.append(text);
    }
    return QVariant::fromValue(list);
}

QVariant ImageReader::inner(int depth)
{
    skipHeader();
    const QVariant held = value(depth + 1);
    return QVariant(QMetaType::fromType<QVariant>(), &held);
}

QVariant ImageReader::named(int depth)
{
    const quint32 length = peek(valueBytes);
    const qint64 end = valueBytes + textBytes + length;
    if (length > maxNameBytes || end > m_buffer.bytesAvailable()) {
        fail();
        return {};
    }
    const QByteArray ahead = m_buffer.peek(end) + '\0';
    const QMetaType type = QMetaType::fromName(ahead.constData() + valueBytes + textBytes);
    if (type.id() == QMetaType::QVariantPair) {
        pass(end);
        const QVariant first = value(depth + 1);
        const QVariant second = value(depth + 1);
        return QVariant::fromValue(QVariantPair(first, second));
    }
    QVariant read;
    if (isReadByName(type) && (!startsWithCount(type) || holds(end, 1)))
        m_stream >> read;
    if (!read.isValid())
        fail();
    return read;
}

void ImageReader::pass(qint64 bytes)
{
    if (bytes > m_buffer.bytesAvailable())
        fail();
    else
        m_buffer.skip(bytes);
}

void ImageReader::passBrush()
{
    quint8 style = Qt::NoBrush;
    m_stream >> style;
    pass(colorBytes);
    if (style == Qt::TexturePattern) {
        QImage texture;
        m_stream >> texture;
    } else if (style >= Qt::LinearGradientPattern && style <= Qt::ConicalGradientPattern) {
        constexpr qint64 stopBytes = numberBytes + colorBytes;
        qint32 type = QGradient::NoGradient;
        m_stream >> type;
        pass(3 * sizeof(qint32)); // spread and modes
        pass(count(stopBytes) * stopBytes);
        if (type == QGradient::LinearGradient)
            pass(4 * numberBytes);
        else
            pass((type == QGradient::RadialGradient ? 5 : 3) * numberBytes);
    }
    pass(transformBytes);
}

void ImageReader::passPen()
{
    pass(sizeof(quint16) + sizeof(quint8) + numberBytes); // style, cosmetic, width
    passBrush();
    pass(numberBytes); // miter limit
    pass(count(numberBytes) * numberBytes); // dashes
    pass(numberBytes + sizeof(quint8)); // offset of the dashes, whether the width is a default
}

void ImageReader::passPalette()
{
    constexpr int brushes = QPalette::NColorGroups * (QPalette::PlaceholderText + 1);
    for (int left = brushes; left > 0 && !failed(); --left)
        passBrush();
}

void ImageReader::passFont()
{
    constexpr qint64 attributeBytes = 31;
    QString name;
    m_stream >> name >> name; // family and style
    pass(attributeBytes);
    for (quint32 left = count(textBytes); left > 0 && !failed(); --left)
        m_stream >> name; // further families
}

void ImageReader::passFormat(int depth)
{
    pass(sizeof(qint32)); // kind
    for (quint32 left = count(keyBytes + valueBytes); left > 0 && !failed(); --left) {
        pass(keyBytes);
        value(depth + 1);
    }
}

bool ImageReader::regionIsSound() const
{
    const qint64 begin = valueBytes + textBytes;
    const qint64 size = peek(valueBytes);
    return size <= m_buffer.bytesAvailable() - begin
        && isRegionOfRectangles(m_buffer.peek(begin + size).mid(begin));
}

/// \return  false if the stream must not be given the next value, which is of that type
bool ImageReader::isSound(quint32 type)
{
    const qint64 begin = m_buffer.pos();
    switch (type) {
    case Polygon:
        return holds(valueBytes, 8);
    case PolygonF:
        return holds(valueBytes, 16);
    case KeySequence:
        return holds(valueBytes, 4);
    case Region:
        return regionIsSound();
    case Font:
        skipHeader();
        passFont();
        break;
    case Brush:
        skipHeader();
        passBrush();
        break;
    case Pen:
        skipHeader();
        passPen();
        break;
    case Palette:
        skipHeader();
        passPalette();
        break;
    default:
        return isPlain(type);
    }
    m_buffer.seek(begin);
    return !failed();
}

/// A format holds values as well, but is put together by the stream alone: it is looked at first.
QVariant ImageReader::format(int depth)
{
    const qint64 begin = m_buffer.pos();
    const bool insideAnother = std::exchange(m_checking, true);
    skipHeader();
    passFormat(depth);
    m_checking = insideAnother;
    QVariant read;
    // One inside another is read with that; to read it here too would double the work per level.
    if (!insideAnother && !failed()) {
        m_buffer.seek(begin);
        m_stream >> read;
    }
    return read;
}

QVariant ImageReader::leaf()
{
    const quint32 type = peek(0);
    QVariant read;
    if (type == 0 || isSound(type))
        m_stream >> read;
    // A type that nobody knows is passed over by the stream, with what belongs to it still there.
    if (type != 0 && !read.isValid())
        fail();
    return read;
}

QVariant ImageReader::value(int depth)
{
    if (depth > maxValueDepth) {
        fail();
        return {};
    }
    switch (peek(0)) {
    case Map:
        return entries<QVariantMap>(depth);
    case Hash:
        return entries<QVariantHash>(depth);
    case List:
        return elements(depth);
    case Texts:
        return texts<QStringList, QString>();
    case ByteArrays:
        return texts<QByteArrayList, QByteArray>();
    case Variant:
        return inner(depth);
    case Format:
        return format(depth);
    case Named:
        return named(depth);
    default:
        return leaf();
    }
}

} // namespace mod_form_qt
