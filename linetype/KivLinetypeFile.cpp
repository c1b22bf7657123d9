// Looking one linetype up in a linetype definition file. Portable.
#include "KivLinetypeFile.h"

#include "KivFileAccess.h"

KivString KivLinetypeFilePath(const KivString& supportPath, const KivString& linetypeFile) {
    return supportPath + KivString(u"\\") + linetypeFile;
}

KivString KivLinetypeKey(const KivString& name) {
    KivString upper = name;
    upper.toUpper();
    return KivString(u"*") + upper;
}

KivLinetypeLookup KivLookUpLinetypeInContent(const KivString& content, const KivString& name) {
    KivLinetypeLookup lookup;
    lookup.readable = content.length() > 0;
    if (!lookup.readable) return lookup;
    lookup.keyPosition = content.find(KivLinetypeKey(name), 0);
    if (!lookup.found()) return lookup;  // not found, or only at the very first character
    lookup.definitionStart = content.find(KivString(u"A,"), lookup.keyPosition);
    if (lookup.definitionStart < 0) {
        // No definition follows the header: the row is still inserted, with an empty definition
        // (its sample draws no line).
        return lookup;
    }
    lookup.definitionEnd = content.find(KivString(u"\n"), lookup.definitionStart);
    if (lookup.definitionEnd < 0) {
        // The last line of a file without a final line feed: the definition runs to the end.
        lookup.definition.copy(content, lookup.definitionStart);
    } else {
        lookup.definition.copy(content, lookup.definitionStart, lookup.definitionEnd - lookup.definitionStart);
    }
    return lookup;
}

KivLinetypeLookup KivLookUpLinetype(const KivString& path, const KivString& name) {
    KivString content;
    {
        KivFileAccess file(path, KivString(u"r"), KivFileAccess::eAnsi);
        if (file.isOpen() == 0) return KivLinetypeLookup{};
        const long length = file.getFileLength();
        if (length <= 0) return KivLinetypeLookup{};
        file.readFile(content, static_cast<std::size_t>(length));
        file.close();
    }
    return KivLookUpLinetypeInContent(content, name);
}
