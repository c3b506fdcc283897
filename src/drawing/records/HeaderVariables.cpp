#include "drawing/records/HeaderVariables.h"

#include "drawing/container/Container.h"
#include "drawing/records/SectionReader.h"

namespace zv::dwg {

namespace {

/// Reads the variables in file order. Those that nothing here uses are passed over, several at a time.
class HeaderReader {
public:
    explicit HeaderReader(RecordReader& in)
        : m_in(in), m_version(in.version()), m_old(m_version <= Version::R14), m_r2000(!m_old),
          m_r2004(m_version >= Version::R2004), m_r2007(m_version >= Version::R2007),
          m_r2010(m_version >= Version::R2010), m_r2013(m_version >= Version::R2013)
    {
    }

    HeaderSection read()
    {
        start();
        switches();
        shorts();
        sizes();
        current();
        space(true);
        space(false);
        if (m_r2000)
            texts(2);
        dimensions();
        controls();
        rest();
        return m_out;
    }

private:
    /// Before R2007 the handles stand among the other fields.
    Handle handle()
    {
        return m_r2007 ? m_in.handles().handleReference().value : m_in.handleReference().value;
    }
    void handles(int count)
    {
        for (int i = 0; i < count; ++i)
            handle();
    }
    void bits(int count) { m_in.skip(static_cast<std::size_t>(count)); }
    void chars(int count) { m_in.skip(static_cast<std::size_t>(count) * 8); }
    void shorts(int count)
    {
        for (int i = 0; i < count; ++i)
            m_in.bitShort();
    }
    void longs(int count)
    {
        for (int i = 0; i < count; ++i)
            m_in.bitLong();
    }
    void doubles(int count)
    {
        for (int i = 0; i < count; ++i)
            m_in.bitDouble();
    }
    void texts(int count)
    {
        for (int i = 0; i < count; ++i)
            m_in.text();
    }

    /// Notes in which bits the value stands that `read` gives.
    template <class Read> auto noted(FieldPlace& place, Read read)
    {
        place.from = m_in.position();
        const auto value = read();
        place.to = m_in.position();
        return value;
    }

    void start()
    {
        if (m_r2013)
            m_in.bitLongLong(); // REQUIREDVERSIONS
        doubles(4);
        texts(4);
        longs(2);
        if (m_old)
            shorts(1);
        if (!m_r2004)
            handle(); // The current viewport's header.
    }

    void switches()
    {
        bits(2); // DIMASO, DIMSHO
        if (m_old)
            bits(1); // DIMSAV
        bits(3);     // PLINEGEN, ORTHOMODE, REGENMODE
        m_out.variables.fillMode = m_in.bit();
        m_out.variables.quickText = m_in.bit();
        m_out.variables.paperSpaceLinetypeScaling = m_in.bit();
        bits(1); // LIMCHECK
        if (m_old)
            bits(1); // BLIPMODE
        if (m_r2004)
            bits(1);
        bits(4); // USRTIMER, SKPOLY, ANGDIR, SPLFRAME
        if (m_old)
            bits(2); // ATTREQ, ATTDIA
        m_out.variables.mirrorText = m_in.bit();
        bits(1); // WORLDVIEW
        if (m_old)
            bits(1); // WIREFRAME
        m_out.variables.modelTab = m_in.bit();
        bits(2); // PLIMCHECK, VISRETAIN
        if (m_old)
            bits(1); // DELOBJ
        bits(2);     // DISPSILH, PELLIPSE
    }

    void shorts()
    {
        shorts(m_old ? 2 : 1); // PROXYGRAPHICS, DRAGMODE
        shorts(5);             // TREEDEPTH, LUNITS, LUPREC, AUNITS, AUPREC
        if (m_old)
            shorts(1); // OSMODE
        shorts(1);     // ATTMODE
        if (m_old)
            shorts(1); // COORDS
        m_out.variables.pointMode = m_in.bitShort();
        if (m_old)
            shorts(1); // PICKSTYLE
        if (m_r2004)
            longs(3);
        shorts(5);  // USERI1 to USERI5
        shorts(14); // SPLINESEGS to TEXTQLTY
    }

    void sizes()
    {
        m_out.variables.linetypeScale =
            noted(m_out.places.linetypeScale, [this] { return m_in.bitDouble(); });
        m_out.variables.textSize = m_in.bitDouble();
        doubles(5); // TRACEWID, SKETCHINC, FILLETRAD, THICKNESS, ANGBASE
        m_out.variables.pointSize = m_in.bitDouble();
        doubles(1); // PLINEWID
        doubles(5); // USERR1 to USERR5
        doubles(6); // CHAMFERA to CHAMFERD, FACETRES, CMLSCALE
        m_out.variables.currentEntityLinetypeScale = m_in.bitDouble();
        texts(1); // MENUNAME
        longs(4); // TDCREATE, TDUPDATE
        if (m_r2004)
            longs(3);
        longs(4); // TDINDWG, TDUSRTIMER
    }

    void current()
    {
        m_in.color(); // CECOLOR
        // This one stands among the fields in every version.
        m_out.variables.handleSeed =
            noted(m_out.places.handleSeed, [this] { return m_in.handleReference().value; });
        m_out.variables.currentLayer = noted(m_out.places.currentLayer, [this] { return handle(); });
        m_out.variables.currentTextStyle = handle();
        handle(); // CELTYPE
        if (m_r2007)
            handle(); // CMATERIAL
        m_out.variables.currentDimensionStyle = handle();
        handle(); // CMLSTYLE
        if (m_r2000)
            doubles(1); // PSVPSCALE
    }

    /// Paper space, then model space.
    void space(bool paper)
    {
        HeaderVariables ignored;
        HeaderVariables& to = paper ? ignored : m_out.variables;
        to.insertionBase = m_in.bitPoint3();
        FieldPlace lower, upper;
        to.extentsMin = noted(lower, [this] { return m_in.bitPoint3(); });
        to.extentsMax = noted(upper, [this] { return m_in.bitPoint3(); });
        m_out.places.extents = {lower.from, upper.to};
        to.limitsMin = m_in.rawPoint2();
        to.limitsMax = m_in.rawPoint2();
        doubles(1); // ELEVATION
        doubles(9); // UCSORG, UCSXDIR, UCSYDIR
        handle();   // UCSNAME
        if (!m_r2000)
            return;
        handle(); // UCSORTHOREF
        shorts(1);
        handle();    // UCSBASE
        doubles(18); // Six origins.
    }

    void dimensions()
    {
        if (m_old) {
            bits(11);  // DIMTOL to DIMSOXD
            chars(2);  // DIMALTD, DIMZIN
            bits(2);   // DIMSD1, DIMSD2
            chars(3);  // DIMTOLJ, DIMJUST, DIMFIT
            bits(1);   // DIMUPT
            chars(4);  // DIMTZIN, DIMALTZ, DIMALTTZ, DIMTAD
            shorts(6); // DIMUNIT to DIMALTTD
            handle();  // DIMTXSTY
        }
        m_out.variables.dimScale = noted(m_out.places.dimScale, [this] { return m_in.bitDouble(); });
        doubles(8); // DIMASZ to DIMTM
        if (m_r2007) {
            doubles(2); // DIMFXL, DIMJOGANG
            shorts(1);  // DIMTFILL
            m_in.color();
        }
        if (m_r2000) {
            bits(6);   // DIMTOL to DIMSE2
            shorts(3); // DIMTAD, DIMZIN, DIMAZIN
        }
        if (m_r2007)
            shorts(1); // DIMARCSYM
        doubles(8);    // DIMTXT to DIMGAP
        if (m_old)
            texts(5); // DIMPOST to DIMBLK2
        if (m_r2000) {
            doubles(1); // DIMALTRND
            bits(1);    // DIMALT
            shorts(1);  // DIMALTD
            bits(4);    // DIMTOFL to DIMSOXD
        }
        for (int color = 0; color < 3; ++color)
            m_in.color();
        if (m_r2000) {
            shorts(11); // DIMADEC to DIMJUST
            bits(2);    // DIMSD1, DIMSD2
            shorts(4);  // DIMTOLJ to DIMALTTZ
            bits(1);    // DIMUPT
            shorts(1);  // DIMATFIT
        }
        if (m_r2007)
            bits(1); // DIMFXLON
        if (m_r2010) {
            bits(1); // DIMTXTDIRECTION
            for (int part = 0; part < 2; ++part) {
                doubles(1);
                texts(1);
            }
        }
        if (m_r2000)
            handles(5); // DIMTXSTY to DIMBLK2
        if (m_r2007)
            handles(3); // DIMLTYPE, DIMLTEX1, DIMLTEX2
        if (m_r2000)
            shorts(2); // DIMLWD, DIMLWE
    }

    void controls()
    {
        HeaderHandles& to = m_out.handles;
        to.blockControl = handle();
        to.layerControl = handle();
        to.styleControl = handle();
        to.linetypeControl = handle();
        handles(4); // Views, user coordinate systems, viewports, applications.
        to.dimensionStyleControl = handle();
        if (!m_r2004)
            handle(); // Viewport headers.
        handle();     // Groups.
        to.mlineStyles = handle();
        to.namedObjects = handle();
        if (m_r2000) {
            shorts(2); // TSTACKALIGN, TSTACKSIZE
            texts(2);  // HYPERLINKBASE, STYLESHEET
            to.layouts = handle();
            handles(2); // Plot settings, plot styles.
        }
        if (m_r2004)
            handles(2); // Materials, colours.
        if (m_r2007)
            handle(); // Visual styles.
        if (m_r2013)
            handle();
    }

    void rest()
    {
        constexpr int kPlotStyleByHandle = 3;
        constexpr std::int32_t kLineweightsHidden = 0x200;
        if (m_r2000) {
            m_out.variables.lineweightDisplay = (m_in.bitLong() & kLineweightsHidden) == 0;
            m_out.variables.insertionUnits =
                noted(m_out.places.insertionUnits, [this] { return m_in.bitShort(); });
            if (m_in.bitShort() == kPlotStyleByHandle)
                handle();
            texts(2); // FINGERPRINTGUID, VERSIONGUID
        }
        if (m_r2004) {
            chars(6); // SORTENTS to HALOGAP
            shorts(2);
            chars(2);
            texts(1); // PROJECTNAME
        }
        HeaderHandles& to = m_out.handles;
        to.paperSpace = handle();
        to.modelSpace = handle();
        to.byLayer = handle();
        to.byBlock = handle();
        to.continuous = handle();
    }

    RecordReader& m_in;
    Version m_version;
    bool m_old, m_r2000, m_r2004, m_r2007, m_r2010, m_r2013;
    HeaderSection m_out;
};

} // namespace

Result<HeaderSection> readHeaderVariables(std::span<const std::byte> section, Version version,
                                          int maintenance, int codePage)
{
    auto opened = openSection(section, version, maintenance, codePage);
    if (!opened)
        return opened.error();
    HeaderSection out = HeaderReader(*opened).read();
    if (!opened->ok())
        return Error{ErrorCode::Damaged, "the header variables are cut short"};
    return out;
}

Result<HeaderSection> readHeaderVariables(const Container& container)
{
    const auto section = container.section(Section::Header);
    if (!section)
        return section.error();
    return readHeaderVariables(*section, container.version(), container.maintenanceVersion(),
                               container.codePage());
}

} // namespace zv::dwg
