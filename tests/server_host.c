/* A host of our own that knows the library only as a shared object: it loads it, registers it,
 * creates every class that the catalogue file lists by its ProgID through the server's entry
 * points alone, and unregisters it again. Run by ctest with the library's path. */
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "tessaline/server/com_server.h"

#define CHECK(condition, ...)                       \
  do {                                              \
    if (!(condition)) {                             \
      fprintf(stderr, "server_host: " __VA_ARGS__); \
      fprintf(stderr, " (line %d)\n", __LINE__);    \
      exit(1);                                      \
    }                                               \
  } while (0)

typedef int32_t (*GetClassObject)(const char*, const char*, TessalineObject**);
typedef int32_t (*NoArguments)(void);
typedef int32_t (*CreateInstance)(TessalineObject*, TessalineObject*, const char*,
                                  TessalineObject**);
typedef uint32_t (*Release)(TessalineObject*);
typedef int32_t (*GetProperty)(TessalineObject*, const char*, char*, size_t);
typedef int32_t (*SetProperty)(TessalineObject*, const char*, const char*);
typedef size_t (*CatalogueFile)(char*, size_t);

/* The POSIX way of taking a function from dlsym without a cast between pointer kinds. */
#define LOAD(variable, name)                              \
  do {                                                    \
    *(void**)(&(variable)) = dlsym(library, name);        \
    CHECK((variable) != NULL, "no entry point %s", name); \
  } while (0)

static char* readFile(const char* path) {
  FILE* file = fopen(path, "rb");
  if (!file) return NULL;
  fseek(file, 0, SEEK_END);
  long size = ftell(file);
  fseek(file, 0, SEEK_SET);
  char* text = malloc((size_t)size + 1);
  size_t got = fread(text, 1, (size_t)size, file);
  text[got] = 0;
  fclose(file);
  return text;
}

/* The value of an attribute of the element between at and end; 0 when it has none. */
static int attribute(const char* at, const char* end, const char* name, char* value, size_t size) {
  char pattern[64];
  snprintf(pattern, sizeof pattern, " %s=\"", name);
  const char* found = strstr(at, pattern);
  if (!found || found > end) return 0;
  const char* start = found + strlen(pattern);
  const char* stop = strchr(start, '"');
  if (!stop || stop > end || (size_t)(stop - start) >= size) return 0;
  memcpy(value, start, (size_t)(stop - start));
  value[stop - start] = 0;
  return 1;
}

int main(int argc, char** argv) {
  CHECK(argc == 2, "usage: server_host libtessaline.so");
  char home[] = "/tmp/tessaline-host-XXXXXX";
  CHECK(mkdtemp(home), "no temporary directory");
  setenv("XDG_DATA_HOME", home, 1);

  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  CHECK(library, "dlopen: %s", dlerror());
  GetClassObject getClassObject;
  LOAD(getClassObject, "DllGetClassObject");
  NoArguments canUnloadNow;
  LOAD(canUnloadNow, "DllCanUnloadNow");
  NoArguments registerServer;
  LOAD(registerServer, "DllRegisterServer");
  NoArguments unregisterServer;
  LOAD(unregisterServer, "DllUnregisterServer");
  CreateInstance createInstance;
  LOAD(createInstance, "TessalineCreateInstance");
  Release release;
  LOAD(release, "TessalineRelease");
  GetProperty getProperty;
  LOAD(getProperty, "TessalineGetProperty");
  SetProperty setProperty;
  LOAD(setProperty, "TessalineSetProperty");
  CatalogueFile catalogueFile;
  LOAD(catalogueFile, "tessalineCatalogueFile");

  CHECK(canUnloadNow() == TESSALINE_S_OK, "live objects before any was made");
  CHECK(registerServer() == TESSALINE_S_OK, "registration failed");
  char path[4096];
  catalogueFile(path, sizeof path);
  char* catalogue = readFile(path);
  CHECK(catalogue, "registration wrote no catalogue file at %s", path);
  CHECK(strstr(catalogue, "{d734cb07-46be-4b64-8da6-5dca53099446}"), "no type library");

  /* A host finds a class in the catalogue by its ProgID and asks the server for it by its
   * class identifier, as the platform's registry lookup does. */
  int controls = 0, creatable = 0;
  for (const char* at = strstr(catalogue, "<class "); at; at = strstr(at + 1, "<class ")) {
    const char* end = strchr(at, '>');
    char name[128], classId[64], progId[128];
    CHECK(end && attribute(at, end, "name", name, sizeof name), "a class without a name");
    CHECK(attribute(at, end, "classId", classId, sizeof classId), "%s has no class id", name);
    char flag[8];
    const int control =
        attribute(at, end, "control", flag, sizeof flag) && strcmp(flag, "True") == 0;
    if (!attribute(at, end, "progId", progId, sizeof progId)) {
      TessalineObject* none = NULL;
      CHECK(getClassObject(classId, TESSALINE_IID_ICLASSFACTORY, &none) ==
                TESSALINE_CLASS_E_CLASSNOTAVAILABLE,
            "%s is listed without a ProgID, yet can be created", name);
      CHECK(!control, "the control %s has no ProgID", name);
      continue;
    }
    ++creatable;
    TessalineObject* factory = NULL;
    CHECK(getClassObject(classId, TESSALINE_IID_ICLASSFACTORY, &factory) == TESSALINE_S_OK,
          "no class object for %s %s", progId, classId);
    TessalineObject* object = NULL;
    CHECK(createInstance(factory, NULL, TESSALINE_IID_IUNKNOWN, &object) == TESSALINE_S_OK,
          "%s could not be created", progId);
    CHECK(canUnloadNow() == TESSALINE_S_FALSE, "%s lives, yet the library could go", progId);
    if (control) {
      /* Every control answers by name; all but the navigation start in data mode 2. */
      char mode[16];
      const int32_t got = getProperty(object, "IDtmControl_DataMode", mode, sizeof mode);
      if (strcmp(name, "DtmNavigation") == 0) {
        CHECK(got == TESSALINE_E_MEMBER(438), "the navigation has a data mode");
      } else {
        CHECK(got == TESSALINE_S_OK && strcmp(mode, "2") == 0, "%s starts in data mode %s", progId,
              got == TESSALINE_S_OK ? mode : "(none)");
      }
      ++controls;
    } else {
      /* The tooltip, the one creatable automation class, is reached by name as well. */
      CHECK(strcmp(name, "cTooltip") == 0, "%s is creatable", name);
      char width[16];
      CHECK(setProperty(object, "MaxWidth", "400") == TESSALINE_S_OK &&
                getProperty(object, "MaxWidth", width, sizeof width) == TESSALINE_S_OK &&
                strcmp(width, "400") == 0,
            "the tooltip's MaxWidth by name");
    }
    release(object);
    release(factory);
  }
  CHECK(controls == 23, "%d controls created, not 23", controls);
  /* A host without the catalogue names the class by its ProgID. */
  TessalineObject* byName = NULL;
  CHECK(getClassObject("Tessaline.DTMDataTextBox", TESSALINE_IID_ICLASSFACTORY, &byName) ==
            TESSALINE_S_OK,
        "no class object by the text box's ProgID");
  release(byName);
  CHECK(creatable == 24, "%d creatable classes, not the 23 controls and the tooltip", creatable);

  TessalineObject* factory = NULL;
  CHECK(getClassObject("{2902F4B1-6052-4C62-9D26-D8BA1E7ED49A}", TESSALINE_IID_IUNKNOWN,
                       &factory) == TESSALINE_S_OK,
        "the text box by its class identifier");
  TessalineObject* box = NULL;
  CHECK(createInstance(factory, NULL, TESSALINE_IID_IDISPATCH, &box) == TESSALINE_S_OK,
        "no text box");
  CHECK(setProperty(box, "IDTMDataControl_Value", "12.5") == TESSALINE_S_OK, "value not set");
  char value[16];
  CHECK(getProperty(box, "IDTMDataControl_Value", value, sizeof value) == TESSALINE_S_OK &&
            strcmp(value, "12.5") == 0,
        "value read back as %s", value);
  CHECK(getProperty(box, "NoSuchMember", value, sizeof value) == TESSALINE_E_MEMBER(438),
        "an unknown member");
  release(box);
  release(factory);
  CHECK(getClassObject("{51440d4a-6433-407e-938f-fda631d8a37e}", TESSALINE_IID_ICLASSFACTORY,
                       &factory) == TESSALINE_CLASS_E_CLASSNOTAVAILABLE,
        "a Logger can't be created from outside");
  CHECK(canUnloadNow() == TESSALINE_S_OK, "objects left alive");

  CHECK(unregisterServer() == TESSALINE_S_OK, "unregistration failed");
  CHECK(access(path, F_OK) != 0, "the catalogue file is still there");
  free(catalogue);
  rmdir(home);
  char tessaline[4200];
  snprintf(tessaline, sizeof tessaline, "%s/tessaline", home);
  rmdir(tessaline);
  rmdir(home);
  printf("server_host: %d controls created through the entry points\n", controls);
  return 0;
}
