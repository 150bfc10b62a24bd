// The way from one of this DLL's automation objects back to the node or document inside it.
#pragma once

#include "xml/xml_document.h"

#include <windows.h>

#include <unknwn.h>

#include <memory>

namespace windows::com {

// Private interfaces, in no type library: no marshaller knows them, so an object that lives in another apartment does
// not answer to them and counts as a foreign one.
class OwnNode : public IUnknown {
public:
    [[nodiscard]] virtual xml::XmlNode node() const noexcept = 0;
};

class OwnDocument : public IUnknown {
public:
    [[nodiscard]] virtual const std::shared_ptr<xml::XmlDocument>& document() const noexcept = 0;
};

} // namespace windows::com

__CRT_UUID_DECL(windows::com::OwnNode, 0x47099ad5, 0x9cb9, 0x4a02, 0xa5, 0x31, 0xa1, 0x41, 0x90, 0x19, 0x40, 0xde)
__CRT_UUID_DECL(windows::com::OwnDocument, 0xd01c48af, 0x7003, 0x44bc, 0xa6, 0x84, 0x32, 0xfd, 0xbc, 0x73, 0x35, 0xa7)
