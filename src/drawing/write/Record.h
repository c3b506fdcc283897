#pragma once

#include "drawing/write/BitWriter.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace zv::dwg {

/// Kinds of ties that a handle reference can state.
inline constexpr unsigned kSoftOwner = 2, kHardOwner = 3, kSoftPointer = 4, kHardPointer = 5;

/// One object of an AC1015 file: its fields, and its handles, which stand behind all fields.
class Record {
public:
    /// `type` is a fixed object type or, from 500, the number of a class.
    Record(int type, Handle handle) : m_type(type), m_handle(handle) {}

    int type() const { return m_type; }
    Handle handle() const { return m_handle; }
    /// Extended data of a registered application, as its raw bytes.
    void extendedData(Handle application, const std::string& bytes);
    /// Starts what every object that is no entity has: owner, reactors, extension dictionary.
    void beginObject(Handle owner, const std::vector<Handle>& reactors = {});
    /// The record as it stands in the file: its length, its bits, its check code.
    std::string framed() const;

    BitWriter fields, handles;

private:
    int m_type;
    Handle m_handle;
    BitWriter m_extended;
};

/// Type numbers of records; entities first. From kFirstClass the class table tells what they are.
enum RecordType {
    kText = 1,
    kAttrib = 2,
    kAttdef = 3,
    kBlock = 4,
    kEndblk = 5,
    kSeqend = 6,
    kInsert = 7,
    kMinsert = 8,
    kVertex2d = 0x0A,
    kVertex3d = 0x0B,
    kVertexMesh = 0x0C,
    kVertexPface = 0x0D,
    kVertexPfaceFace = 0x0E,
    kPolyline2d = 0x0F,
    kPolyline3d = 0x10,
    kArc = 0x11,
    kCircle = 0x12,
    kLine = 0x13,
    kDimensionOrdinate = 0x14,
    kDimensionLinear = 0x15,
    kDimensionAligned = 0x16,
    kDimensionAngular3 = 0x17,
    kDimensionAngular2 = 0x18,
    kDimensionRadius = 0x19,
    kDimensionDiameter = 0x1A,
    kPoint = 0x1B,
    kFace3d = 0x1C,
    kPolylinePface = 0x1D,
    kPolylineMesh = 0x1E,
    kSolid = 0x1F,
    kTrace = 0x20,
    kShape = 0x21,
    kViewport = 0x22,
    kEllipse = 0x23,
    kSpline = 0x24,
    kRay = 0x28,
    kXline = 0x29,
    kDictionary = 0x2A,
    kMtext = 0x2C,
    kLeader = 0x2D,
    kTolerance = 0x2E,
    kMline = 0x2F,
    kBlockControl = 0x30,
    kBlockHeader = 0x31,
    kLayerControl = 0x32,
    kLayer = 0x33,
    kStyleControl = 0x34,
    kStyle = 0x35,
    kLtypeControl = 0x38,
    kLtype = 0x39,
    kViewControl = 0x3C,
    kUcsControl = 0x3E,
    kVportControl = 0x40,
    kVport = 0x41,
    kAppidControl = 0x42,
    kAppid = 0x43,
    kDimstyleControl = 0x44,
    kDimstyle = 0x45,
    kViewportHeaderControl = 0x46,
    kViewportHeader = 0x47,
    kMlinestyle = 0x49,
    kLwpolyline = 0x4D,
    kHatch = 0x4E,
    kXrecord = 0x4F,
    kFirstClass = 500,
    kDictionaryWithDefault = 500,
    kPlaceholder = 501,
    kLayout = 502,
    kWipeout = 503,
};

/// The objects of a file, one behind another, and where each begins.
struct ObjectStream {
    std::string bytes;
    std::map<Handle, std::uint32_t> places; ///< From the first byte of this stream.
    int highestType = 0;

    void add(const Record& record)
    {
        places[record.handle()] = static_cast<std::uint32_t>(bytes.size());
        highestType = std::max(highestType, record.type());
        bytes += record.framed();
    }
};

/// The user's coordinates that an object keeps, which are the world's: origin, axes, elevation, kind of view.
void writeWorldCoordinates(BitWriter& fields);

inline constexpr int kAnsi1252 = 30; ///< The number that files give this code page.

/// Text of a drawing in the bytes of ANSI 1252; what has no place there becomes \U+XXXX. For files of another
/// code page that is all but ASCII.
std::string encodeText(std::u16string_view text, int codePage = kAnsi1252);

} // namespace zv::dwg
