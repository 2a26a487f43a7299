// Storing, loading, describing and questioning objects.
#include "tests/support/stored_objects.h"

#include <cntr/cntrtmpl.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace qnTest {
namespace {

using Typed = qcRegionT<qcEdgelet>;

class Description {
public:
    explicit Description(bool counts) : counts_(counts) { out_ << std::hexfloat; }

    void object(qcPersistent const* object)
    {
        if (!object) {
            out_ << "null ";
            return;
        }
        auto const entry = numbers_.emplace(dynamic_cast<void const*>(object), numbers_.size() + 1);
        out_ << '#' << entry.first->second << ' ';
        if (!entry.second)
            return;
        out_ << typeid(*object).name();
        if (counts_)
            if (auto const* const rep = dynamic_cast<qcRepBase const*>(object))
                out_ << " held " << rep->refCount();
        out_ << " {";
        fields(*object);
        out_ << "}\n";
    }

    std::string text() const { return out_.str(); }

private:
    void fields(qcPersistent const& object)
    {
        if (auto const* const error = dynamic_cast<qcExceptionWithString const*>(&object)) {
            out_ << error->errorNumber();
            for (wchar_t const c : error->message())
                out_ << ' ' << static_cast<long>(c);
        }
        if (auto const* const contour = dynamic_cast<qcContour const*>(&object)) {
            out_ << contour->label() << ' ' << contour->qcContour::isClosed() << ' '
                 << contour->cachedVectorSize();
            for (auto const& p : contour->points())
                out_ << " (" << p.x() << ',' << p.y() << ')';
        }
        if (auto const* const typed = dynamic_cast<qcContourT<qcEdgelet> const*>(&object)) {
            for (auto const& e : typed->data())
                out_ << " [" << e.position().x() << ',' << e.position().y() << ',' << e.magnitude()
                     << ',' << int(e.angle().code()) << ']';
            this->object(typed->dataFromPointsXform().get());
        }
        if (auto const* const region = dynamic_cast<qcRegion const*>(&object))
            list(region->holes());
        if (auto const* const set = dynamic_cast<qcRegionSet const*>(&object)) {
            out_ << set->cachedVectorSize();
            list(set->regions());
        }
        if (auto const* const set = dynamic_cast<qcRegionSetT<qcEdgelet> const*>(&object))
            list(set->regionsT());
        if (auto const* const xform = dynamic_cast<qc2XformBase const*>(&object))
            for (qcVector<2> const p : {qcVector<2>(0, 0), {1, 0}, {0, 1}})
                out_ << xform->mapPoint(p).x() << ',' << xform->mapPoint(p).y() << ' ';
    }

    template <class List>
    void list(List const& handles)
    {
        out_ << '\n' << handles.size() << ": ";
        for (auto const& handle : handles)
            object(handle.get());
    }

    bool counts_;
    std::ostringstream out_;
    std::map<void const*, std::size_t> numbers_;
};

/// Runs queries one by one and remembers the first that threw what it must not.
struct Questions {
    template <class Query>
    void ask(char const* name, Query query)
    {
        try {
            query();
        } catch (qcContourDefs::Errors const&) {
        } catch (qcBadPointer const&) {
        } catch (std::exception const& error) {
            if (failure.empty())
                failure = std::string(name) + ": " + error.what();
        }
    }

    std::string failure;
};

std::vector<qcVector<2>> places(std::vector<qcVector<2>> const& points)
{
    std::vector<qcVector<2>> all{{0, 0}, {1.5, 1.5}, {1e300, -1e300}};
    all.insert(all.end(), points.begin(), points.begin() + (points.empty() ? 0 : 1));
    return all;
}

void askContour(qcContour& c, Questions& q)
{
    qcRecordingTablet tablet;
    qcEllipse ellipse;
    double residual = 0;
    qcRegion hull;
    qcContour mapped;
    q.ask("contour", [&] { c.length(), c.polygon(), c.isSelfIntersecting(); });
    q.ask("draw", [&] { c.draw(tablet, qcContourDefs::eOutline, {}, qcUITablet::eImageLayer); });
    q.ask("meanPosition", [&] { c.meanPosition(); });
    for (auto const& p : places(c.points())) {
        q.ask("nearest", [&] { c.qcContour::closestVertexIndex(p), c.distToPoint(p, false); });
        q.ask("vertexIndex", [&] { c.vertexIndex(p, 0.5), c.vertexIndex(p, 1e-9); });
        q.ask("segment", [&] { c.intersections(qcLineSeg({0, 0}, p), true); });
        q.ask("extremal", [&] { c.extremalVertexPosition(qcRadian(p.x())); });
        q.ask("rectangle", [&] { c.encloseRect(qcXform<2>(qcMatrix<2>(), p)); });
    }
    q.ask("itself", [&] { c.intersections(c); });
    for (auto mode : {qcContourDefs::eFarthestPair, qcContourDefs::eFromFirstPoint})
        q.ask("diameter", [&] { c.diameter(mode); });
    q.ask("ellipse", [&] { c.fitEllipse(ellipse, residual); });
    q.ask("hull", [&] { c.convexHull(hull); });
    q.ask("map", [&] { c.map(qcXform<2>(), mapped); });
}

/// What regions and sets have in common.
template <class Figure>
void askFigure(Figure& f, std::vector<qcVector<2>> const& points, Questions& q)
{
    qcRecordingTablet tablet;
    Figure clean;
    q.ask("figure draw", [&] { f.draw(tablet, qcColor(), qcUITablet::eImageLayer); });
    for (bool const holes : {false, true}) {
        q.ask("area", [&] { f.area(holes), f.centerOfMass(holes); });
        q.ask("inertia", [&] { f.inertiaMatrix(holes); });
        for (auto const& p : places(points)) {
            q.ask("inside", [&] { f.inside(p, holes); });
            q.ask("distance", [&] { f.distToPoint(p, holes, holes, true); });
            q.ask("vertices", [&] { f.distToPoint(p, true, holes, false); });
            q.ask("figure rectangle", [&] { f.encloseRect(qcXform<2>(qcMatrix<2>(), p)); });
        }
    }
    q.ask("regularize", [&] { f.regularize(clean); });
    q.ask("outerHull", [&] { f.outerHull(clean); });
    q.ask("equality", [&] { static_cast<void>(f == Figure(f)); });
}

}  // namespace

Root rootOf(qcPersistent* made)
{
    Root root;
    root.object = made;
    if (auto* const rep = dynamic_cast<qcRepBase*>(made))
        root.counted = qcPtrHandle<qcRepBase>(rep);
    else
        root.owned.reset(made);
    return root;
}

Bytes store(qcPersistent const& object)
{
    qcMemoryArchive archive;
    qcPersistent* unused = nullptr;
    qcPersistent::serializePointer(archive, const_cast<qcPersistent*>(&object), unused);
    archive.close();
    return archive.bytes();
}

Root load(Bytes const& bytes)
{
    qcMemoryArchive archive(bytes.data(), bytes.size());
    qcPersistent* loaded = nullptr;
    qcPersistent::serializePointer(archive, nullptr, loaded);
    Root root;
    if (auto claimed = archive.claim(loaded))
        root.owned = std::move(claimed);
    else
        root.counted = qcPtrHandle<qcRepBase>(dynamic_cast<qcRepBase*>(loaded));
    root.object = loaded;
    archive.close();
    return root;
}

Bytes readFile(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeFile(std::string const& path, Bytes const& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<char const*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        throw std::runtime_error("cannot write " + path);
}

std::string describe(qcPersistent const* object, bool counts)
{
    Description description(counts);
    description.object(object);
    return description.text();
}

std::string askEverything(qcPersistent& object)
{
    Questions questions;
    if (auto* const contour = dynamic_cast<qcContour*>(&object))
        askContour(*contour, questions);
    if (auto* const region = dynamic_cast<qcRegion*>(&object)) {
        askFigure(*region, region->points(), questions);
        for (bool const holes : {false, true})
            questions.ask("crossings", [&] { region->intersections(*region, holes); });
    }
    if (auto* const set = dynamic_cast<qcRegionSet*>(&object))
        askFigure(*set, {}, questions);
    if (auto* const typed = dynamic_cast<qcContourT<qcEdgelet>*>(&object))
        questions.ask("datum", [&] { typed->point(typed->datum({1, 2})); });
    return questions.failure;
}

}  // namespace qnTest
