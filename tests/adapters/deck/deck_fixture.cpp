#include "adapters/deck/deck_fixture.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace qrn::test {

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
constexpr const char* kMl = "application/vnd.openxmlformats-officedocument.presentationml.";

struct Names {
  std::string p, a, r;
};

Names namesOf(const DeckOptions& options) {
  if (options.strict)
    return {"http://purl.oclc.org/ooxml/presentationml/main", "http://purl.oclc.org/ooxml/drawingml/main",
            "http://purl.oclc.org/ooxml/officeDocument/relationships"};
  return {"http://schemas.openxmlformats.org/presentationml/2006/main",
          "http://schemas.openxmlformats.org/drawingml/2006/main",
          "http://schemas.openxmlformats.org/officeDocument/2006/relationships"};
}

std::string open(const Names& n, const std::string& element) {
  return "<p:" + element + " xmlns:a=\"" + n.a + "\" xmlns:r=\"" + n.r + "\" xmlns:p=\"" + n.p + "\">";
}

// Each entry: id, kind, target.
std::string rels(const Names& n, const std::vector<std::array<std::string, 3>>& all) {
  std::string text = std::string(kHead) +
                     "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
  for (const auto& one : all)
    text +=
        "<Relationship Id=\"" + one[0] + "\" Type=\"" + n.r + "/" + one[1] + "\" Target=\"" + one[2] + "\"/>";
  return text + "</Relationships>";
}

std::string shape(int id, const std::string& name, const std::string& placeholder, const std::string& text,
                  const std::string& inside = "") {
  return "<p:sp><p:nvSpPr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvSpPr/><p:nvPr>" + placeholder + inside +
         "</p:nvPr></p:nvSpPr><p:spPr><a:xfrm><a:off x=\"700000\" y=\"" +
         std::to_string(400000 + 1500000 * (id - 2)) +
         "\"/><a:ext cx=\"7000000\" cy=\"1200000\"/></a:xfrm></p:spPr><p:txBody><a:bodyPr/><a:lstStyle/>" +
         text + "</p:txBody></p:sp>";
}

std::string paragraph(const std::string& text) {
  return "<a:p><a:r><a:rPr lang='en-GB' dirty=\"0\"/><a:t>" + text + "</a:t></a:r></a:p>";
}

std::string tree(const std::string& shapes) {
  return "<p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>"
         "<p:grpSpPr/>" +
         shapes + "</p:spTree>";
}

std::string slide(const Names& n, int number, bool tagged) {
  const std::string no = std::to_string(number);
  return std::string(kHead) + "<!-- kept -->" + open(n, "sld") + "<p:cSld>" +
         tree(shape(2, "Title " + no, "<p:ph type=\"title\"/>", paragraph("Question " + no)) +
              shape(3, "Content", "<p:ph idx=\"1\"/>",
                    "<a:p><a:r><a:t> </a:t></a:r><a:r><a:rPr b=\"1\"/><a:t>one &amp; two</a:t></a:r></a:p>"
                    "<a:p><a:r><a:t>three</a:t></a:r><a:br/><a:r><a:t>four</a:t></a:r></a:p>",
                    "<p:custDataLst><p:tags r:id=\"rShape\"/></p:custDataLst>") +
              "<p:pic><p:nvPicPr><p:cNvPr id=\"9\" name=\"Picture\" descr=\"raw\nline end\"/><p:cNvPicPr/>"
              "<p:nvPr/></p:nvPicPr><p:blipFill/><p:spPr/></p:pic>") +
         (tagged ? "\r\n<p:custDataLst><p:custData r:id='rData'/><p:tags r:id=\"rTags\"/></p:custDataLst>"
                 : "") +
         "<p:extLst><p:ext "
         "uri=\"{X}\"/></p:extLst></p:cSld>\r\n<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>";
}

std::string tagList(const Names& n, const std::string& tags) {
  return std::string(kHead) + open(n, "tagLst") + tags + "</p:tagLst>";
}

std::string theme(const Names& n) {
  std::string text = std::string(kHead) + "<a:theme xmlns:a=\"" + n.a +
                     "\" name=\"T\"><a:themeElements><a:clrScheme name=\"C\">"
                     "<a:dk1><a:sysClr val=\"windowText\" lastClr=\"010203\"/></a:dk1>"
                     "<a:lt1><a:sysClr val=\"window\" lastClr=\"FFFFFF\"/></a:lt1>"
                     "<a:dk2><a:srgbClr val=\"102030\"/></a:dk2><a:lt2><a:srgbClr val=\"E0E1E2\"/></a:lt2>";
  for (int i = 1; i <= 5; ++i)
    text += "<a:accent" + std::to_string(i) + "><a:srgbClr val=\"A0B0C" + std::to_string(i) +
            "\"/></a:accent" + std::to_string(i) + ">";
  return text +
         "</a:clrScheme><a:fontScheme name=\"F\"><a:majorFont><a:latin typeface=\"Big Face\"/></a:majorFont>"
         "<a:minorFont><a:latin typeface=\"Small "
         "Face\"/></a:minorFont></a:fontScheme></a:themeElements></a:theme>";
}

std::string master(const Names& n) {
  return std::string(kHead) + open(n, "sldMaster") +
         "<p:cSld><p:bg><p:bgPr><a:solidFill><a:schemeClr val=\"bg1\"/>"
         "</a:solidFill><a:effectLst/></p:bgPr></p:bg>" +
         tree(shape(2, "Title", "<p:ph type=\"title\"/>", paragraph("Click")) +
              shape(3, "Body", "<p:ph type=\"body\" idx=\"1\"/>", paragraph("Click"))) +
         "</p:cSld><p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"dk2\" tx2=\"lt2\" accent1=\"accent1\" "
         "accent2=\"accent2\" "
         "accent3=\"accent3\" accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" "
         "folHlink=\"folHlink\"/><p:sldLayoutIdLst><p:sldLayoutId id=\"2147483649\" r:id=\"rId1\"/>"
         "<p:sldLayoutId id=\"2147483650\" "
         "r:id=\"rId2\"/></p:sldLayoutIdLst><p:txStyles><p:titleStyle><a:lvl1pPr>"
         "<a:defRPr sz=\"4400\" b=\"1\" u=\"sng\"><a:solidFill><a:schemeClr val=\"accent1\"/></a:solidFill>"
         "<a:latin typeface=\"+mj-lt\"/></a:defRPr></a:lvl1pPr></p:titleStyle><p:bodyStyle><a:lvl1pPr>"
         "<a:defRPr sz=\"2800\" i=\"1\"><a:solidFill><a:schemeClr val=\"tx1\"/></a:solidFill>"
         "<a:latin typeface=\"+mn-lt\"/></a:defRPr></a:lvl1pPr></p:bodyStyle></p:txStyles></p:sldMaster>";
}

std::string contentTypes(const DeckOptions& options) {
  std::string text =
      std::string(kHead) +
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"png\" ContentType=\"image/png\"/>";
  const auto add = [&](const std::string& name, const std::string& type) {
    text += "<Override PartName=\"/" + name + "\" ContentType=\"" + type + "\"/>";
  };
  add("ppt/presentation.xml", std::string(kMl) + "presentation.main+xml");
  for (int i = 1; i <= options.slides; ++i)
    add("ppt/slides/slide" + std::to_string(i) + ".xml", std::string(kMl) + "slide+xml");
  add("ppt/slideMasters/slideMaster1.xml", std::string(kMl) + "slideMaster+xml");
  for (const char* number : {"1", "2"})
    add("ppt/slideLayouts/slideLayout" + std::string(number) + ".xml", std::string(kMl) + "slideLayout+xml");
  add("ppt/theme/theme1.xml", "application/vnd.openxmlformats-officedocument.theme+xml");
  add("ppt/notesSlides/notesSlide7.xml", std::string(kMl) + "notesSlide+xml");
  for (int i = 1; i <= (options.tagged ? 3 : 1); ++i)
    add("ppt/tags/tag" + std::to_string(i) + ".xml", std::string(kMl) + "tags+xml");
  return text + "</Types>";
}

std::string presentation(const Names& n, const DeckOptions& options) {
  std::string text =
      kHead + open(n, "presentation") +
      "<p:sldMasterIdLst><p:sldMasterId id=\"2147483648\" r:id=\"rIdM\"/></p:sldMasterIdLst><p:sldIdLst>";
  for (int i = 1; i <= options.slides; ++i)  // ids fall: 300, 299 ...
    text += "<p:sldId id=\"" + std::to_string(301 - i) + "\" r:id=\"s" + std::to_string(i) + "\"/>";
  text += "</p:sldIdLst><p:sldSz cx=\"12192000\" cy=\"6858000\"/><p:notesSz cx=\"6858000\" cy=\"9144000\"/>";
  if (options.tagged)
    text += "<p:custDataLst><p:tags r:id=\"rIdTags\"/></p:custDataLst>";
  return text + "<p:defaultTextStyle/></p:presentation>";
}

std::string layout(const Names& n, const std::string& type) {
  return std::string(kHead) + replaced(open(n, "sldLayout"), ">", " type=\"" + type + "\">") +
         "<p:cSld name=\"L\">" + tree(shape(2, "Title", "<p:ph type=\"title\"/>", paragraph("Click"))) +
         "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sldLayout>";
}

void addSlides(PartList& parts, const Names& n, const DeckOptions& options) {
  for (int i = 1; i <= options.slides; ++i) {
    const std::string no = std::to_string(i);
    std::vector<std::array<std::string, 3>> of = {
        {"rLayout", "slideLayout", "../slideLayouts/slideLayout1.xml"},
        {"rShape", "tags", "../tags/tag1.xml"}};
    if (i == 2)
      of.push_back({"rNotes", "notesSlide", "../notesSlides/notesSlide7.xml"});
    if (i == 1 && options.tagged)
      of.push_back({"rTags", "tags", options.absolute ? "/ppt/tags/tag2.xml" : "../tags/tag2.xml"});
    parts.emplace_back("ppt/slides/slide" + no + ".xml", slide(n, i, i == 1 && options.tagged));
    parts.emplace_back("ppt/slides/_rels/slide" + no + ".xml.rels", rels(n, of));
  }
}

}  // namespace

PartList deckParts(const DeckOptions& options) {
  const Names n = namesOf(options);
  PartList parts;
  parts.emplace_back("[Content_Types].xml", contentTypes(options));
  parts.emplace_back("_rels/.rels", rels(n, {{"rId1", "officeDocument", "ppt/presentation.xml"}}));
  std::vector<std::array<std::string, 3>> ofDeck = {{"rIdM", "slideMaster", "slideMasters/slideMaster1.xml"}};
  for (int i = 1; i <= options.slides; ++i)
    ofDeck.push_back(
        {"s" + std::to_string(i), "slide",
         (options.absolute ? "/ppt/slides/slide" : "slides/slide") + std::to_string(i) + ".xml"});
  if (options.tagged)
    ofDeck.push_back({"rIdTags", "tags", "tags/tag3.xml"});
  parts.emplace_back("ppt/_rels/presentation.xml.rels", rels(n, ofDeck));
  parts.emplace_back("ppt/presentation.xml", presentation(n, options));
  addSlides(parts, n, options);
  parts.emplace_back("ppt/slideMasters/slideMaster1.xml", master(n));
  parts.emplace_back("ppt/slideMasters/_rels/slideMaster1.xml.rels",
                     rels(n, {{"rId1", "slideLayout", "../slideLayouts/slideLayout1.xml"},
                              {"rId2", "slideLayout", "../slideLayouts/slideLayout2.xml"},
                              {"rId3", "theme", "../theme/theme1.xml"}}));
  for (const auto& [no, type] : {std::pair{"1", "obj"}, {"2", "titleOnly"}}) {
    parts.emplace_back("ppt/slideLayouts/slideLayout" + std::string(no) + ".xml", layout(n, type));
    parts.emplace_back("ppt/slideLayouts/_rels/slideLayout" + std::string(no) + ".xml.rels",
                       rels(n, {{"rId1", "slideMaster", "../slideMasters/slideMaster1.xml"}}));
  }
  parts.emplace_back("ppt/theme/theme1.xml", theme(n));
  parts.emplace_back("ppt/tags/tag1.xml", tagList(n, "<p:tag name=\"OFSHAPE\" val=\"1\"/>"));
  if (options.tagged) {
    parts.emplace_back(
        "ppt/tags/tag2.xml",
        tagList(n,
                "<p:tag name='FOREIGN' val='it&apos;s'/>\r\n<p:tag name=\"TIMING\" val=\"|1.5\"/>"
                "<p:tag name=\"QRNVOTES\" val=\"old&#xA;\"/>"));
    parts.emplace_back("ppt/tags/tag3.xml", tagList(n, "<p:tag name=\"OTHER\" val=\"o\"/>"));
  }
  parts.emplace_back("ppt/notesSlides/notesSlide7.xml",
                     kHead + open(n, "notes") + "<p:cSld>" +
                         tree(shape(2, "Slide Image", "<p:ph type=\"sldImg\"/>", "") +
                              shape(3, "Notes", "<p:ph type=\"body\" idx=\"1\"/>", paragraph("a.mtx note"))) +
                         "</p:cSld></p:notes>");
  parts.emplace_back("ppt/media/image1.png", std::string("\x89PNG\r\n\0\0not a picture", 20));
  if (options.bom)
    for (auto& [name, text] : parts)
      if (text.rfind("<?xml", 0) == 0)
        text.insert(0, "\xEF\xBB\xBF");
  return parts;
}

std::string& part(PartList& parts, const std::string& name) {
  const auto found =
      std::find_if(parts.begin(), parts.end(), [&](const auto& one) { return one.first == name; });
  if (found == parts.end())
    return parts.emplace_back(name, "").second;
  return found->second;
}

void writeZip(const std::string& path, const PartList& parts) {
  zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  ASSERT_NE(zip, nullptr) << path;
  for (const auto& [name, text] : parts) {
    zip_source_t* source = zip_source_buffer(zip, text.data(), text.size(), 0);
    const zip_int64_t index = zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    ASSERT_GE(index, 0) << name;
    const bool media = name.find("/media/") != std::string::npos;
    zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), media ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 1);
  }
  ASSERT_EQ(zip_close(zip), 0) << zip_strerror(zip);
}

PartList readZip(const std::string& path, bool packed) {
  PartList parts;
  zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (zip == nullptr) {
    ADD_FAILURE() << path << " is no whole zip file";
    return parts;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
    zip_stat_t info;
    zip_stat_index(zip, static_cast<zip_uint64_t>(i), 0, &info);
    std::string text(packed ? info.comp_size : info.size, '\0');
    zip_file_t* file = zip_fopen_index(zip, static_cast<zip_uint64_t>(i), packed ? ZIP_FL_COMPRESSED : 0);
    EXPECT_EQ(zip_fread(file, text.data(), text.size()), static_cast<zip_int64_t>(text.size())) << info.name;
    zip_fclose(file);
    parts.emplace_back(info.name, std::move(text));
  }
  zip_discard(zip);
  return parts;
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
  const std::size_t at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string stateOf(host::Presentation& deck) {
  std::string state;
  const auto add = [&state](host::Tags& tags) {
    std::vector<std::string> names = tags.Names();
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) state += name + "=" + tags.Item(name) + ";";
    state += "|";
  };
  add(deck.tags());
  for (int i = 1; i <= deck.SlideCount(); ++i) add(deck.Slides(i).tags());
  return state;
}

int inChild(const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    int result = 98;
    try {
      result = body();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "in the child: %s\n", error.what());
    }
    ::_exit(result);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 99;
}

void becomeNobody() {
  constexpr unsigned kNobody = 65534;
  if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
    throw std::runtime_error("cannot give up root");
}

TempFolder::TempFolder() : path_((std::filesystem::temp_directory_path() / "deckXXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr)
    ADD_FAILURE() << "no temporary folder";
  ::setenv("XDG_STATE_HOME", (path_ + "-state").c_str(), 1);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
  std::filesystem::remove_all(path_ + "-state", ignored);
}

std::string TempFolder::deck(const DeckOptions& options) const {
  writeZip(file("talk.pptx"), deckParts(options));
  return file("talk.pptx");
}

std::vector<std::string> TempFolder::names() const {
  std::vector<std::string> all;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    all.push_back(entry.path().filename().string());
  std::sort(all.begin(), all.end());
  return all;
}

}  // namespace qrn::test
