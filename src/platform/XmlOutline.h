#pragma once

#include <QString>

namespace platform {

/// What a look through an XML file tells about the first element of a name, without the file in
/// memory. Reading is as strict as that of XmlDocument. Positions are bytes from the file's begin.
struct XmlOutline
{
    bool wellFormed = false;
    bool inUtf8 = false; ///< else there are no positions
    bool found = false;  ///< there is such an element
    bool isRoot = false;
    qint64 end = 0;          ///< behind the element
    qint64 lastChildEnd = 0; ///< behind the last whole element directly in it; 0 without one
    int children = 0;        ///< whole elements directly in it
};

/// Looks through a file. Of one that is not well-formed it tells what comes before the first
/// mistake. Throws Failure when the file cannot be read.
XmlOutline outlineXml(const QString &path, const char *name);

} // namespace platform
