#include "drawing/entities/SolidEdges.h"

#include "drawing/geometry/Vector.h"

#include <bit>
#include <charconv>
#include <optional>
#include <vector>

namespace zv::dwg {

namespace {

struct Token {
    enum class Kind { End, Word, Number, Pointer, RecordEnd };
    Kind kind = Kind::End;
    std::string_view word;
    double number = 0; ///< Of a pointer, the record's place.
};

/// Takes a model apart, in either form.
class Tokens {
public:
    Tokens(std::string_view model, bool binary) : m_model(model), m_binary(binary) {}

    std::size_t position() const { return m_at; }
    void seek(std::size_t at)
    {
        m_at = at;
        m_numbers = 0;
    }
    /// Passes over what stands before the records.
    void skipHead();
    Token next() { return m_binary ? nextBinary() : nextText(); }

private:
    Token nextText();
    Token nextBinary();
    Token textToken(std::string_view word);
    std::string_view take(std::size_t size);
    std::uint64_t takeWhole(unsigned bytes);
    double takeDouble();

    std::string_view m_model;
    bool m_binary;
    std::size_t m_at = 0;
    int m_numbers = 0; ///< Of a point, those that still follow.
};

void Tokens::skipHead()
{
    if (m_binary) {
        // Texts and numbers; the first record begins with its name.
        constexpr std::size_t kHead = 15 + 4 * 4;
        m_at = std::min(kHead, m_model.size());
        for (;;) {
            const std::size_t before = m_at;
            const Token token = nextBinary();
            if (token.kind == Token::Kind::End)
                return;
            if (token.kind == Token::Kind::Word && (m_model[before] == 0x0D || m_model[before] == 0x0E))
                return seek(before);
        }
    }
    constexpr int kFirstWithProduct = 200;
    int version = 0;
    std::from_chars(m_model.data(), m_model.data() + m_model.size(), version);
    for (int lines = version < kFirstWithProduct ? 1 : 3; lines > 0; --lines) {
        const std::size_t end = m_model.find('\n', m_at);
        m_at = end == std::string_view::npos ? m_model.size() : end + 1;
    }
}

Token Tokens::nextText()
{
    constexpr std::string_view kBlank = " \t\r\n";
    m_at = std::min(m_model.find_first_not_of(kBlank, m_at), m_model.size());
    const std::size_t end = std::min(m_model.find_first_of(kBlank, m_at), m_model.size());
    const std::string_view word = m_model.substr(m_at, end - m_at);
    m_at = end;
    return textToken(word);
}

Token Tokens::textToken(std::string_view word)
{
    if (word.empty())
        return {};
    if (word == "#")
        return {Token::Kind::RecordEnd, word, 0};
    const bool pointer = word[0] == '$';
    if (word[0] == '@') {
        // A text behind its length.
        std::size_t size = 0;
        std::from_chars(word.data() + 1, word.data() + word.size(), size);
        m_at += std::min(size + 1, m_model.size() - m_at);
        return {Token::Kind::Word, {}, 0};
    }
    double number = 0;
    const char* const end = word.data() + word.size();
    const auto read = std::from_chars(word.data() + (pointer ? 1 : 0), end, number);
    if (read.ec != std::errc() || read.ptr != end)
        return {Token::Kind::Word, word, 0};
    return {pointer ? Token::Kind::Pointer : Token::Kind::Number, word, number};
}

/// The next bytes; fewer at the end.
std::string_view Tokens::take(std::size_t size)
{
    const std::string_view bytes = m_model.substr(m_at, size);
    m_at += bytes.size();
    return bytes;
}

std::uint64_t Tokens::takeWhole(unsigned bytes)
{
    std::uint64_t value = 0;
    unsigned shift = 0;
    for (const char c : take(bytes)) {
        value |= std::uint64_t{static_cast<unsigned char>(c)} << shift;
        shift += 8;
    }
    return value;
}

double Tokens::takeDouble()
{
    return std::bit_cast<double>(takeWhole(8));
}

Token Tokens::nextBinary()
{
    if (m_numbers > 0) {
        --m_numbers;
        return {Token::Kind::Number, {}, takeDouble()};
    }
    std::string_view name;
    while (m_at < m_model.size()) {
        const auto tag = takeWhole(1);
        switch (tag) {
        case 2:
            take(1);
            return {Token::Kind::Word, {}, 0};
        case 3:
            return {Token::Kind::Number, {}, double(static_cast<std::int16_t>(takeWhole(2)))};
        case 4:
        case 21:
            return {Token::Kind::Number, {}, double(static_cast<std::int32_t>(takeWhole(4)))};
        case 5:
            take(4);
            return {Token::Kind::Word, {}, 0};
        case 6:
            return {Token::Kind::Number, {}, takeDouble()};
        case 7:
            take(takeWhole(1));
            return {Token::Kind::Word, {}, 0};
        case 8:
            take(takeWhole(2));
            return {Token::Kind::Word, {}, 0};
        case 9:
        case 18:
            take(takeWhole(4));
            return {Token::Kind::Word, {}, 0};
        case 10:
            return {Token::Kind::Word, "reversed", 0};
        case 11:
            return {Token::Kind::Word, "forward", 0};
        case 12:
            return {Token::Kind::Pointer, {}, double(static_cast<std::int32_t>(takeWhole(4)))};
        case 13:
        case 14: {
            // A name in parts; the first one tells what it is of the kinds that count here.
            const std::string_view part = take(takeWhole(1));
            if (name.empty())
                name = part;
            if (tag == 13)
                return {Token::Kind::Word, name, 0};
            break;
        }
        case 15:
        case 16:
            return {Token::Kind::Word, {}, 0};
        case 17:
            return {Token::Kind::RecordEnd, {}, 0};
        case 19:
        case 20:
            m_numbers = 2;
            return {Token::Kind::Number, {}, takeDouble()};
        case 22:
            m_numbers = 1;
            return {Token::Kind::Number, {}, takeDouble()};
        default:
            m_at = m_model.size();
            return {};
        }
    }
    return {};
}

/// What one record of the model is, by the first part of its name.
enum class RecordKind : std::uint8_t { Other, Body, Transform, Edge, Vertex, Point, Straight, Round };

RecordKind recordKind(std::string_view name)
{
    constexpr std::pair<std::string_view, RecordKind> kKinds[] = {
        {"body", RecordKind::Body},          {"transform", RecordKind::Transform},
        {"edge", RecordKind::Edge},          {"vertex", RecordKind::Vertex},
        {"point", RecordKind::Point},        {"straight", RecordKind::Straight},
        {"ellipse", RecordKind::Round},      {"straight-curve", RecordKind::Straight},
        {"ellipse-curve", RecordKind::Round}};
    for (const auto& [known, kind] : kKinds) {
        if (name == known)
            return kind;
    }
    return RecordKind::Other;
}

class EdgeReader {
public:
    EdgeReader(std::string_view model, bool binary)
        : m_tokens(model, binary), m_work(kMostTimes * model.size())
    {
    }
    StoredPicture read();

private:
    struct RecordPlace {
        std::size_t at = 0; ///< Where its fields begin.
        RecordKind kind = RecordKind::Other;
    };
    /// The fields of a record that are used: what it points at, the numbers behind the last pointer, and the
    /// first word there.
    struct Fields {
        std::vector<std::size_t> pointers;
        std::vector<double> numbers;
        std::string_view word;
    };

    void findRecords();
    Fields fieldsOf(std::size_t record);
    std::optional<std::size_t> pointed(const Fields& fields, RecordKind kind) const;
    std::optional<Point3> vertexAt(std::size_t record);
    void readEdge(std::size_t record);
    void readRound(std::size_t curve, Point3 start, Point3 end, bool reversed);
    void readTransform(std::size_t body);

    /// How often a byte may be read again, as a damaged model may ask.
    static constexpr std::size_t kMostTimes = 16;
    static constexpr std::size_t kMostFields = 32;
    Tokens m_tokens;
    std::vector<RecordPlace> m_records;
    std::size_t m_work;
    Placement m_place;
    StoredPicture m_picture;
};

void EdgeReader::findRecords()
{
    m_tokens.skipHead();
    for (;;) {
        Token token = m_tokens.next();
        // Newer texts number their records.
        if (token.kind == Token::Kind::Number)
            token = m_tokens.next();
        if (token.kind != Token::Kind::Word)
            return;
        m_records.push_back({m_tokens.position(), recordKind(token.word)});
        while (token.kind != Token::Kind::RecordEnd) {
            token = m_tokens.next();
            if (token.kind == Token::Kind::End)
                return;
        }
    }
}

EdgeReader::Fields EdgeReader::fieldsOf(std::size_t record)
{
    Fields fields;
    const std::size_t start = m_records[record].at;
    m_tokens.seek(start);
    for (;;) {
        const Token token = m_tokens.next();
        if (token.kind == Token::Kind::End || token.kind == Token::Kind::RecordEnd)
            break;
        if (token.kind == Token::Kind::Pointer) {
            if (token.number >= 0 && token.number < double(m_records.size()))
                fields.pointers.push_back(static_cast<std::size_t>(token.number));
            fields.numbers.clear();
            fields.word = {};
        } else if (token.kind == Token::Kind::Number) {
            fields.numbers.push_back(token.number);
        } else if (fields.word.empty()) {
            fields.word = token.word;
        }
        if (fields.pointers.size() > kMostFields || fields.numbers.size() > kMostFields)
            break;
    }
    const std::size_t read = m_tokens.position() - start + 1;
    m_work -= std::min(read, m_work);
    return fields;
}

std::optional<std::size_t> EdgeReader::pointed(const Fields& fields, RecordKind kind) const
{
    for (const std::size_t record : fields.pointers) {
        if (m_records[record].kind == kind)
            return record;
    }
    return {};
}

std::optional<Point3> EdgeReader::vertexAt(std::size_t record)
{
    const auto point = pointed(fieldsOf(record), RecordKind::Point);
    if (!point)
        return {};
    const Fields fields = fieldsOf(*point);
    if (fields.numbers.size() < 3)
        return {};
    return Point3{fields.numbers[0], fields.numbers[1], fields.numbers[2]};
}

void EdgeReader::readEdge(std::size_t record)
{
    const Fields fields = fieldsOf(record);
    std::vector<Point3> ends;
    for (const std::size_t pointer : fields.pointers) {
        if (m_records[pointer].kind != RecordKind::Vertex)
            continue;
        if (const auto end = vertexAt(pointer))
            ends.push_back(*end);
    }
    if (ends.size() != 2)
        return;
    if (const auto curve = pointed(fields, RecordKind::Round)) {
        const bool reversed = fields.word == "reversed" ||
                              (fields.word.empty() && !fields.numbers.empty() && fields.numbers[0] == 1);
        readRound(*curve, ends[0], ends[1], reversed);
    } else if (pointed(fields, RecordKind::Straight)) {
        Outline line;
        line.rings = {ends};
        m_picture.figures.emplace_back().shape = std::move(line);
    }
}

void EdgeReader::readRound(std::size_t curve, Point3 start, Point3 end, bool reversed)
{
    const std::vector<double> n = fieldsOf(curve).numbers;
    if (n.size() < 10)
        return;
    Ellipse round;
    round.center = {n[0], n[1], n[2]};
    round.normal = unit({n[3], n[4], n[5]});
    round.majorAxis = {n[6], n[7], n[8]};
    round.axisRatio = n[9];
    const double major = length(round.majorAxis), minor = major * round.axisRatio;
    if (!(major > 0) || !(minor > 0))
        return;
    if (length(end - start) > major * 1e-9) {
        const Point3 x = round.majorAxis * (1 / major), y = cross(round.normal, x);
        const auto parameter = [&](Point3 p) {
            const Point3 from = p - round.center;
            return std::atan2(dot(from, y) / minor, dot(from, x) / major);
        };
        round.startParameter = parameter(reversed ? end : start);
        round.endParameter = parameter(reversed ? start : end);
    }
    m_picture.figures.emplace_back().shape = round;
}

void EdgeReader::readTransform(std::size_t body)
{
    const auto record = pointed(fieldsOf(body), RecordKind::Transform);
    if (!record)
        return;
    constexpr std::size_t kNumbers = 13;
    std::vector<double> n = fieldsOf(*record).numbers;
    // Newer models have a number of the record's own before these.
    if (n.size() == kNumbers + 1)
        n.erase(n.begin());
    if (n.size() < kNumbers)
        return;
    const double scale = n[12];
    m_place.x = Point3{n[0], n[1], n[2]} * scale;
    m_place.y = Point3{n[3], n[4], n[5]} * scale;
    m_place.z = Point3{n[6], n[7], n[8]} * scale;
    m_place.origin = {n[9], n[10], n[11]};
}

StoredPicture EdgeReader::read()
{
    findRecords();
    bool placed = false;
    for (std::size_t i = 0; i < m_records.size() && m_work > 0; ++i) {
        if (m_records[i].kind == RecordKind::Edge) {
            readEdge(i);
        } else if (m_records[i].kind == RecordKind::Body && !placed) {
            readTransform(i);
            placed = true;
        }
    }
    for (PictureFigure& figure : m_picture.figures)
        figure.place = m_place;
    return std::move(m_picture);
}

} // namespace

StoredPicture readSolidEdges(std::string_view model, bool binary)
{
    return EdgeReader(model, binary).read();
}

} // namespace zv::dwg
