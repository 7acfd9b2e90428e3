/* A host of our own that knows the library only as a shared object: it loads it, registers it,
 * creates every class that the catalogue file lists by its ProgID through the server's entry
 * points alone, and unregisters it again. Run by ctest with the library's path. */
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "server/com_server.h"

#define CHECK(condition, ...)                          \
  do {                                                 \
    if (!(condition)) {                                \
      fprintf(stderr, "server_host: " __VA_ARGS__);    \
      fprintf(stderr, " (line %d)\n", __LINE__);       \
      exit(1);                                         \
    }                                                  \
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
#define LOAD(variable, name)                                 \
  do {                                                       \
    *(void**)(&(variable)) = dlsym(library, name);           \
    CHECK((variable) != NULL, "no entry point %s", name);    \
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

  int controls = 0;
  for (const char* at = strstr(catalogue, "progId=\""); at; at = strstr(at + 1, "progId=\"")) {
    char progId[128];
    const char* start = at + 8;
    size_t length = (size_t)(strchr(start, '"') - start);
    CHECK(length < sizeof progId, "ProgID too long");
    memcpy(progId, start, length);
    progId[length] = 0;

    TessalineObject* factory = NULL;
    CHECK(getClassObject(progId, TESSALINE_IID_ICLASSFACTORY, &factory) == TESSALINE_S_OK,
          "no class object for %s", progId);
    TessalineObject* object = NULL;
    CHECK(createInstance(factory, NULL, TESSALINE_IID_IUNKNOWN, &object) == TESSALINE_S_OK,
          "%s could not be created", progId);
    CHECK(canUnloadNow() == TESSALINE_S_FALSE, "%s lives, yet the library could go", progId);
    char mode[16];
    if (getProperty(object, "IDtmControl_DataMode", mode, sizeof mode) == TESSALINE_S_OK) {
      CHECK(strcmp(mode, "2") == 0, "%s starts in data mode %s", progId, mode);
      ++controls;
    }
    release(object);
    release(factory);
  }
  CHECK(controls >= 12, "only %d controls created", controls);

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
