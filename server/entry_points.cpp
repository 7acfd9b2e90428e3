// The four entry points of the in-process server and the calls on the objects they hand out.
#include <dlfcn.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>

#include "tessaline/frame/interfaces.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/server/class_catalogue.h"
#include "tessaline/server/com_server.h"
#include "tessaline/support/resources.h"
#include "tessaline/values/text.h"

struct TessalineObject {
  // A class object (the factory of a class) or an instance.
  const tessaline::CatalogueEntry* entry = nullptr;
  tessaline::Ref<tessaline::Object> instance;
  std::atomic<uint32_t> references{1};
};

namespace {

using namespace tessaline;

std::atomic<int64_t> liveObjects{0};
std::atomic<int64_t> serverLocks{0};

TessalineObject* handOut(const CatalogueEntry* entry, Ref<Object> instance) {
  auto* object = new TessalineObject;
  object->entry = entry;
  object->instance = std::move(instance);
  ++liveObjects;
  return object;
}

bool is(const char* interfaceId, std::string_view expected) {
  std::string_view id = interfaceId ? interfaceId : "";
  if (id.size() >= 2 && id.front() == '{' && id.back() == '}') id = id.substr(1, id.size() - 2);
  return equalsIgnoreCaseAscii(id, expected);
}

// The hosts's errors become results; nothing travels over the C boundary as an exception.
template <class Body>
int32_t boundary(Body&& body) {
  try {
    return body();
  } catch (const VbError& error) {
    return TESSALINE_E_MEMBER(error.number());
  } catch (...) {
    return TESSALINE_E_FAIL;
  }
}

void ensureBackend() {
  if (platform::hasBackend()) return;
  headless::install(".");
  regexp::install();
  chart::install();
}

bool answers(const TessalineObject& object, const char* interfaceId) {
  if (is(interfaceId, TESSALINE_IID_IUNKNOWN)) return true;
  if (!object.instance) return is(interfaceId, TESSALINE_IID_ICLASSFACTORY);
  if (is(interfaceId, TESSALINE_IID_IDISPATCH)) return true;
  if (object.entry && (is(interfaceId, object.entry->identity->defaultInterface))) return true;
  return static_cast<bool>(queryInterface(object.instance, interfaceId ? interfaceId : ""));
}

std::string libraryPath() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&DllGetClassObject), &info) && info.dli_fname) {
    std::error_code ignored;
    return std::filesystem::absolute(info.dli_fname, ignored).string();
  }
  return {};
}

std::string catalogueFile() {
  const char* data = std::getenv("XDG_DATA_HOME");
  std::filesystem::path base;
  if (data && *data) {
    base = data;
  } else {
    const char* home = std::getenv("HOME");
    base = std::filesystem::path(home && *home ? home : ".") / ".local" / "share";
  }
  return (base / "tessaline" / "catalogue.xml").string();
}

// The catalogue file as it stands, or an empty one.
void loadCatalogue(pugi::xml_document& document, const std::string& path) {
  if (!std::filesystem::exists(path) || !document.load_file(path.c_str()) ||
      std::string_view(document.document_element().name()) != "catalogue") {
    document.reset();
    document.append_child("catalogue");
  }
}

int32_t saveCatalogue(pugi::xml_document& document, const std::string& path) {
  std::error_code failure;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), failure);
  const std::string temporary = path + ".saving";
  if (!document.save_file(temporary.c_str(), "  ")) return TESSALINE_E_FAIL;
  std::filesystem::rename(temporary, path, failure);
  if (failure) {
    std::filesystem::remove(temporary, failure);
    return TESSALINE_E_FAIL;
  }
  return TESSALINE_S_OK;
}

void removeServer(pugi::xml_node catalogue, const std::string& library) {
  for (pugi::xml_node server = catalogue.child("server"); server;) {
    pugi::xml_node next = server.next_sibling("server");
    if (library == server.attribute("library").value()) catalogue.remove_child(server);
    server = next;
  }
}

std::string braced(std::string_view id) { return "{" + std::string(id) + "}"; }

// A toolbox bitmap written beside the catalogue file, for hosts that show it; its path.
std::string writeToolboxBitmap(const std::string& catalogue, int32_t id) {
  const std::string name = toolboxBitmapName(id);
  const std::filesystem::path path = std::filesystem::path(catalogue).parent_path() / name;
  std::error_code failure;
  std::filesystem::create_directories(path.parent_path(), failure);
  const auto bytes = resourceBytes(name);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  return path.string();
}

}  // namespace

extern "C" {

int32_t DllGetClassObject(const char* classId, const char* interfaceId, TessalineObject** object) {
  if (!object) return TESSALINE_E_POINTER;
  *object = nullptr;
  return boundary([&] {
    // A class identifier, as the platform's registry hands it over; a ProgID is taken too, so
    // that a host without the catalogue file can still name the class.
    const CatalogueEntry* entry = classId ? findClass(classId) : nullptr;
    if (!entry || !entry->create || !entry->identity->creatable()) {
      return TESSALINE_CLASS_E_CLASSNOTAVAILABLE;
    }
    if (!is(interfaceId, TESSALINE_IID_ICLASSFACTORY) && !is(interfaceId, TESSALINE_IID_IUNKNOWN)) {
      return TESSALINE_E_NOINTERFACE;
    }
    *object = handOut(entry, nullptr);
    return TESSALINE_S_OK;
  });
}

int32_t DllCanUnloadNow(void) {
  return liveObjects == 0 && serverLocks == 0 ? TESSALINE_S_OK : TESSALINE_S_FALSE;
}

int32_t DllRegisterServer(void) {
  return boundary([] {
    const std::string path = catalogueFile();
    const std::string library = libraryPath();
    pugi::xml_document document;
    loadCatalogue(document, path);
    pugi::xml_node catalogue = document.document_element();
    removeServer(catalogue, library);
    pugi::xml_node server = catalogue.append_child("server");
    server.append_attribute("library") = library.c_str();
    server.append_attribute("typeLibrary") = braced(kTypeLibrary.id).c_str();
    server.append_attribute("name") = std::string(kTypeLibrary.name).c_str();
    server.append_attribute("version") =
        (std::to_string(kTypeLibrary.major) + "." + std::to_string(kTypeLibrary.minor)).c_str();
    server.append_attribute("locale") = kTypeLibrary.locale;
    server.append_attribute("helpString") = std::string(kTypeLibrary.helpString).c_str();
    for (const CatalogueEntry& entry : tessaline::catalogue()) {
      const ClassIdentity& identity = *entry.identity;
      pugi::xml_node type = server.append_child("class");
      type.append_attribute("name") = std::string(identity.name).c_str();
      type.append_attribute("classId") = braced(identity.classId).c_str();
      type.append_attribute("defaultInterface") = braced(identity.defaultInterface).c_str();
      if (!identity.eventInterface.empty()) {
        type.append_attribute("eventInterface") = braced(identity.eventInterface).c_str();
      }
      if (identity.creatable() && entry.create) {
        type.append_attribute("progId") = identity.progId().c_str();
      }
      if (identity.isControl()) {
        type.append_attribute("control") = "True";
        type.append_attribute("miscStatus") = kControlMiscStatus;
        type.append_attribute("toolboxBitmap") =
            writeToolboxBitmap(path, identity.toolboxBitmap).c_str();
      }
      if (entry.members) {
        for (const PersistedProperty& property : entry.members().persisted()) {
          const std::string& name = property.readAs.empty() ? property.writtenAs : property.readAs;
          type.append_child("property").append_attribute("name") = name.c_str();
        }
      }
    }
    return saveCatalogue(document, path);
  });
}

int32_t DllUnregisterServer(void) {
  return boundary([] {
    const std::string path = catalogueFile();
    if (!std::filesystem::exists(path)) return TESSALINE_S_OK;
    pugi::xml_document document;
    loadCatalogue(document, path);
    pugi::xml_node catalogue = document.document_element();
    removeServer(catalogue, libraryPath());
    if (!catalogue.child("server")) {
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
      return TESSALINE_S_OK;
    }
    return saveCatalogue(document, path);
  });
}

int32_t TessalineQueryInterface(TessalineObject* object, const char* interfaceId,
                                TessalineObject** result) {
  if (!object || !result) return TESSALINE_E_POINTER;
  *result = nullptr;
  if (!answers(*object, interfaceId)) return TESSALINE_E_NOINTERFACE;
  TessalineAddRef(object);
  *result = object;
  return TESSALINE_S_OK;
}

uint32_t TessalineAddRef(TessalineObject* object) { return object ? ++object->references : 0; }

uint32_t TessalineRelease(TessalineObject* object) {
  if (!object) return 0;
  const uint32_t left = --object->references;
  if (left == 0) {
    delete object;
    --liveObjects;
  }
  return left;
}

int32_t TessalineCreateInstance(TessalineObject* classObject, TessalineObject* outer,
                                const char* interfaceId, TessalineObject** instance) {
  if (!classObject || !instance) return TESSALINE_E_POINTER;
  *instance = nullptr;
  if (classObject->instance || !classObject->entry) return TESSALINE_E_NOINTERFACE;
  if (outer) return TESSALINE_CLASS_E_NOAGGREGATION;
  return boundary([&] {
    ensureBackend();
    TessalineObject* made = handOut(classObject->entry, classObject->entry->create());
    if (!answers(*made, interfaceId)) {
      TessalineRelease(made);
      return TESSALINE_E_NOINTERFACE;
    }
    *instance = made;
    return TESSALINE_S_OK;
  });
}

int32_t TessalineLockServer(TessalineObject* classObject, int32_t lock) {
  if (!classObject) return TESSALINE_E_POINTER;
  if (lock) {
    ++serverLocks;
  } else if (serverLocks > 0) {
    --serverLocks;
  }
  return TESSALINE_S_OK;
}

int32_t TessalineGetProperty(TessalineObject* object, const char* name, char* buffer, size_t size) {
  if (!object || !name || !buffer || size == 0) return TESSALINE_E_POINTER;
  auto control = refCast<Dispatchable>(object->instance);
  if (!control) return TESSALINE_E_NOINTERFACE;
  return boundary([&] {
    const std::string text = control->get(name).toText();
    const size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return TESSALINE_S_OK;
  });
}

int32_t TessalineSetProperty(TessalineObject* object, const char* name, const char* value) {
  if (!object || !name || !value) return TESSALINE_E_POINTER;
  auto control = refCast<Dispatchable>(object->instance);
  if (!control) return TESSALINE_E_NOINTERFACE;
  return boundary([&] {
    control->let(name, Variant(value));
    return TESSALINE_S_OK;
  });
}

size_t tessalineCatalogueFile(char* buffer, size_t size) {
  const std::string path = catalogueFile();
  if (buffer && size > 0) {
    const size_t length = std::min(path.size(), size - 1);
    std::memcpy(buffer, path.data(), length);
    buffer[length] = '\0';
  }
  return path.size();
}

}  // extern "C"
