/// @file
/// qcContourDefs: the enumerations and the exception classes of the contour library.
#pragma once

#include <cntr/config.h>

#include <qc/core/archive.h>
#include <qc/core/exception.h>
#include <qc/core/persistent.h>

#include <string>

/// Scope of the library's enumerations and exceptions; it has no data of its own.
///
/// Every exception below has a fixed error number and a message, which is empty unless a query says
/// otherwise. A handler may name the class itself, qcContourDefs::Errors, qcExceptionWithString,
/// qcException, qcPersistent or std::exception.
class CNTR_EXPORT qcContourDefs {
public:
    /// How a contour is drawn. Every value draws the edges as line segments.
    enum DrawMode {
        eOutline = 0,
    };

    /// What the circle around a contour is measured by.
    enum DiameterMode {
        eFarthestPair = 0,    ///< its diameter is the farthest pair of points
        eFromFirstPoint = 1,  ///< centred on the first point, reaching the farthest other one
    };

    /// What happens to outlines that cross themselves or each other.
    enum IntersectionMode {
        eIgnore = 0,      ///< they stay as they are; every value not listed here does the same
        eOuterHull = 1,   ///< they are replaced by their outer hull
        eRegularize = 2,  ///< they are replaced by their regularised outline
    };

    class Errors;
    class EmptyContour;
    class EmptyRegionSet;
    class BadParams;
    class RegionCannotBeSetOpen;
};

/// Base of the library's own exceptions.
class CNTR_EXPORT qcContourDefs::Errors : public qcExceptionWithString {
public:
    ~Errors() override;

protected:
    /// With a message.
    explicit Errors(std::wstring const& message = L"");
    Errors(Errors const&);
    Errors& operator=(Errors const&);

    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version);
};

/// A contour or region has too few points for the operation. Number 0x10004680.
class CNTR_EXPORT qcContourDefs::EmptyContour : public qcContourDefs::Errors {
public:
    /// With a message, empty unless given.
    explicit EmptyContour(std::wstring const& message = L"");
    EmptyContour(EmptyContour const&);
    EmptyContour& operator=(EmptyContour const&);
    ~EmptyContour() override;

    long errorNumber() const override;

    /// Deletes this object, which must stand on the heap, and throws a copy of it.
    void suicideAndRethrow() override;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version);

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;
};

/// A region set has no regions for the operation. Number 0x10004682.
class CNTR_EXPORT qcContourDefs::EmptyRegionSet : public qcContourDefs::Errors {
public:
    /// With a message, empty unless given.
    explicit EmptyRegionSet(std::wstring const& message = L"");
    EmptyRegionSet(EmptyRegionSet const&);
    EmptyRegionSet& operator=(EmptyRegionSet const&);
    ~EmptyRegionSet() override;

    long errorNumber() const override;

    /// Deletes this object, which must stand on the heap, and throws a copy of it.
    void suicideAndRethrow() override;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version);

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;
};

/// An argument is out of its valid range. Number 0x10004683.
class CNTR_EXPORT qcContourDefs::BadParams : public qcContourDefs::Errors {
public:
    /// With a message, empty unless given.
    explicit BadParams(std::wstring const& message = L"");
    BadParams(BadParams const&);
    BadParams& operator=(BadParams const&);
    ~BadParams() override;

    long errorNumber() const override;

    /// Deletes this object, which must stand on the heap, and throws a copy of it.
    void suicideAndRethrow() override;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version);

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;
};

/// An attempt to make a region open. Number 0x10004684.
class CNTR_EXPORT qcContourDefs::RegionCannotBeSetOpen : public qcContourDefs::Errors {
public:
    /// With a message, empty unless given.
    explicit RegionCannotBeSetOpen(std::wstring const& message = L"");
    RegionCannotBeSetOpen(RegionCannotBeSetOpen const&);
    RegionCannotBeSetOpen& operator=(RegionCannotBeSetOpen const&);
    ~RegionCannotBeSetOpen() override;

    long errorNumber() const override;

    /// Deletes this object, which must stand on the heap, and throws a copy of it.
    void suicideAndRethrow() override;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version);

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;
};
