#pragma once

#include <QBuffer>
#include <QDataStream>
#include <QVariant>

namespace mod_form_qt {

/// The version of the stream in which a map is written as bytes.
inline constexpr int imageStreamVersion = 19;

/// Tells whether a value can be read back from an image. `ImageReader` refuses types of which bytes
/// could make anything: an easing curve holds the address of a function, and a container of
/// containers, or of values, is read by the toolkit with no look at how much there is.
/// \param value  one that is persistable
bool fitsImage(const QVariant& value);

/// Tells whether the bytes of a region are what the toolkit writes: its rectangles. Others are
/// orders that make it of regions inside regions, or of rectangles that are not there. \param bytes
/// without the number of them that a stream puts in front; none are an empty region
bool isRegionOfRectangles(QByteArrayView bytes);

/// Reads values from bytes that nobody vouches for. Containers are read here and not by the stream:
/// it makes room for as many elements as the bytes claim to hold, and goes as deep as they say. Of
/// all other types it gets only those that it can be trusted with. A type of the program's own is
/// read by its own operators.
class ImageReader
{
public:
    /// \param buffer  open for reading; has to outlive this
    explicit ImageReader(QBuffer& buffer);

    QDataStream& stream() { return m_stream; }

    bool failed() const { return m_stream.status() != QDataStream::Ok; }

    /// Reads the next value.
    /// \param depth  number of values that it stands in
    /// \return       an invalid one, also if the reading has failed
    QVariant value(int depth = 0);

private:
    void fail() { m_stream.setStatus(QDataStream::ReadCorruptData); }

    quint32 count(qint64 bytesEach);
    quint32 peek(qint64 offset) const;
    bool holds(qint64 offset, qint64 bytesEach) const;
    void skipHeader();

    template <typename Container>
    QVariant entries(int depth);
    QVariant elements(int depth);
    template <typename List, typename Text>
    QVariant texts();
    QVariant inner(int depth);
    QVariant named(int depth);
    QVariant format(int depth);
    QVariant leaf();

    bool isSound(quint32 type);
    bool regionIsSound() const;
    void pass(qint64 bytes);
    void passBrush();
    void passPen();
    void passPalette();
    void passFont();
    void passFormat(int depth);

    QBuffer& m_buffer;
    QDataStream m_stream;
    bool m_checking = false; ///< a format is being looked at
};

} // namespace mod_form_qt
