/// \file
/// The archive form of an edge point.
#include <qc/core/archive.h>
#include <qc/features/edgelet.h>

qcArchive& operator||(qcArchive& archive, qcEdgelet& value)
{
    qcVector<2> position = value.position();
    archive || position;
    unsigned char rest[3] = {static_cast<unsigned char>(value.magnitude() & 0xFF),
                             static_cast<unsigned char>(value.magnitude() >> 8),
                             value.angle().code()};
    archive.bytes(rest, sizeof rest);
    value = qcEdgelet(position, static_cast<unsigned short>(rest[0] | (rest[1] << 8)),
                      qcAngle8(rest[2]));
    return archive;
}
