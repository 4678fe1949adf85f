#!/usr/bin/env python3
"""Writes the bare deck of a sample, without exercise and votes: make_deck.py first|risk OUT.pptx"""
import sys
import zipfile

A = 'xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main"'
R = 'xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"'
P = 'xmlns:p="http://schemas.openxmlformats.org/presentationml/2006/main"'
NS = f"{A} {R} {P}"
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
REL = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
TYPE = "application/vnd.openxmlformats-officedocument."
EMU = 12700
WIDTH, HEIGHT = 960, 540  # points
PANEL = "1D3A5F"
DARK = ("dk2", "lt1", "dk1", "lt2")  # what background and text take of the theme
LIGHT = ("lt1", "dk2", "lt2", "dk1")

parts = {}
overrides = []


def esc(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def add(name, xml, content_type=None, rels=()):
    parts[name] = HEAD + xml
    if content_type:
        overrides.append((name, TYPE + content_type))
    if rels:
        folder, leaf = name.rsplit("/", 1)
        lines = "".join(
            f'<Relationship Id="rId{i}" Type="{REL}{kind}" Target="{target}"/>'
            for i, (kind, target) in enumerate(rels, 1)
        )
        parts[f"{folder}/_rels/{leaf}.rels"] = (
            HEAD + f'<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">{lines}'
            "</Relationships>"
        )


def frame(x, y, w, h):
    return (
        f'<a:xfrm><a:off x="{x * EMU}" y="{y * EMU}"/><a:ext cx="{w * EMU}" cy="{h * EMU}"/></a:xfrm>'
    )


def paragraphs(lines, props=""):
    return "".join(f"<a:p><a:r><a:rPr lang=\"en-GB\"{props}/><a:t>{esc(line)}</a:t></a:r></a:p>" for line in lines)


def placeholder(number, name, kind, lines, place="", idx=None, style=""):
    index = f' idx="{idx}"' if idx is not None else ""
    kind = f' type="{kind}"' if kind else ""
    return (
        f'<p:sp><p:nvSpPr><p:cNvPr id="{number}" name="{name}"/><p:cNvSpPr><a:spLocks noGrp="1"/></p:cNvSpPr>'
        f"<p:nvPr><p:ph{kind}{index}/></p:nvPr></p:nvSpPr><p:spPr>{place}</p:spPr>"
        f"<p:txBody><a:bodyPr/><a:lstStyle>{style}</a:lstStyle>{paragraphs(lines)}</p:txBody></p:sp>"
    )


def box(number, name, x, y, w, h, lines, size, colour="tx1", fill=None):
    background = f'<a:solidFill><a:srgbClr val="{fill}"/></a:solidFill>' if fill else "<a:noFill/>"
    body = "".join(
        f'<a:p><a:pPr><a:spcAft><a:spcPts val="600"/></a:spcAft></a:pPr><a:r><a:rPr lang="en-GB" sz="{size * 100}">'
        f'<a:solidFill><a:schemeClr val="{colour}"/></a:solidFill></a:rPr><a:t>{esc(line)}</a:t></a:r></a:p>'
        for line in lines
    )
    return (
        f'<p:sp><p:nvSpPr><p:cNvPr id="{number}" name="{name}"/><p:cNvSpPr txBox="1"/><p:nvPr/></p:nvSpPr>'
        f'<p:spPr>{frame(x, y, w, h)}<a:prstGeom prst="rect"><a:avLst/></a:prstGeom>{background}</p:spPr>'
        f'<p:txBody><a:bodyPr wrap="square" lIns="182880" tIns="137160" rIns="182880"/><a:lstStyle/>{body}</p:txBody></p:sp>'
    )


TREE = (
    '<p:nvGrpSpPr><p:cNvPr id="1" name=""/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr><a:xfrm><a:off x="0" y="0"/>'
    '<a:ext cx="0" cy="0"/><a:chOff x="0" y="0"/><a:chExt cx="0" cy="0"/></a:xfrm></p:grpSpPr>'
)


def tree(*shapes):
    return f"<p:spTree>{TREE}{''.join(shapes)}</p:spTree>"


def colours():
    system = [("dk1", "windowText", "000000"), ("lt1", "window", "FFFFFF")]
    own = [("dk2", "10233B"), ("lt2", "E9EEF4"), ("accent1", "4C9BE8"), ("accent2", "F2A33A"), ("accent3", "6CC08B"),
           ("accent4", "E0677B"), ("accent5", "B48EDD"), ("accent6", "58C5C7"), ("hlink", "8AB8F0"),
           ("folHlink", "C3A6E8")]
    return "".join(f'<a:{n}><a:sysClr val="{v}" lastClr="{c}"/></a:{n}>' for n, v, c in system) + "".join(
        f'<a:{n}><a:srgbClr val="{c}"/></a:{n}>' for n, c in own)


def theme(number):
    line = '<a:ln w="9525"><a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:ln>'
    fill = '<a:solidFill><a:schemeClr val="phClr"/></a:solidFill>'
    effect = "<a:effectStyle><a:effectLst/></a:effectStyle>"
    fonts = "".join(f'<a:{k}><a:latin typeface="Arial"/><a:ea typeface=""/><a:cs typeface=""/></a:{k}>'
                    for k in ("majorFont", "minorFont"))
    add(f"ppt/theme/theme{number}.xml",
        f'<a:theme {A} name="Workshop"><a:themeElements><a:clrScheme name="Workshop">{colours()}</a:clrScheme>'
        f'<a:fontScheme name="Workshop">{fonts}</a:fontScheme><a:fmtScheme name="Workshop"><a:fillStyleLst>{fill * 3}'
        f"</a:fillStyleLst><a:lnStyleLst>{line * 3}</a:lnStyleLst><a:effectStyleLst>{effect * 3}</a:effectStyleLst>"
        f"<a:bgFillStyleLst>{fill * 3}</a:bgFillStyleLst></a:fmtScheme></a:themeElements></a:theme>", "theme+xml")


def text_styles():
    def level(n, size, indent, bullet):
        mark = '<a:buFont typeface="Arial"/><a:buChar char="&#8226;"/>' if bullet else "<a:buNone/>"
        return (f'<a:lvl{n}pPr marL="{indent}" indent="{-342900 if bullet else 0}" algn="l"><a:spcBef><a:spcPts val="1200"/>'
                f'</a:spcBef>{mark}<a:defRPr sz="{size * 100}"><a:solidFill><a:schemeClr val="tx1"/></a:solidFill>'
                f'<a:latin typeface="+mn-lt"/></a:defRPr></a:lvl{n}pPr>')

    title = ('<a:lvl1pPr algn="l"><a:buNone/><a:defRPr sz="3600" b="1"><a:solidFill><a:schemeClr val="tx1"/>'
             '</a:solidFill><a:latin typeface="+mj-lt"/></a:defRPr></a:lvl1pPr>')
    return (f"<p:txStyles><p:titleStyle>{title}</p:titleStyle><p:bodyStyle>{level(1, 24, 342900, True)}"
            f"{level(2, 20, 742950, True)}</p:bodyStyle><p:otherStyle>{level(1, 18, 0, False)}</p:otherStyle></p:txStyles>")


def master_and_layouts(ground):
    stripe = ('<p:sp><p:nvSpPr><p:cNvPr id="9" name="Stripe"/><p:cNvSpPr/><p:nvPr userDrawn="1"/></p:nvSpPr><p:spPr>'
              + frame(0, 0, 12, HEIGHT) + '<a:prstGeom prst="rect"><a:avLst/></a:prstGeom><a:solidFill><a:schemeClr '
              'val="accent2"/></a:solidFill><a:ln><a:noFill/></a:ln></p:spPr><p:txBody><a:bodyPr/><a:lstStyle/><a:p/>'
              "</p:txBody></p:sp>")
    ids = "".join(f'<p:sldLayoutId id="{2147483649 + i}" r:id="rId{i + 1}"/>' for i in range(3))
    add("ppt/slideMasters/slideMaster1.xml",
        f'<p:sldMaster {NS}><p:cSld><p:bg><p:bgPr><a:solidFill><a:schemeClr val="bg1"/></a:solidFill><a:effectLst/>'
        f"</p:bgPr></p:bg>"
        + tree(stripe, placeholder(2, "Title", "title", ["Title"], frame(60, 36, 840, 72)),
               placeholder(3, "Text", "body", ["Text"], frame(60, 126, 840, 360), 1))
        + '</p:cSld><p:clrMap bg1="%s" tx1="%s" bg2="%s" tx2="%s" accent1="accent1" ' % ground
        + 'accent2="accent2" '
        'accent3="accent3" accent4="accent4" accent5="accent5" accent6="accent6" hlink="hlink" folHlink="folHlink"/>'
        f"<p:sldLayoutIdLst>{ids}</p:sldLayoutIdLst>{text_styles()}</p:sldMaster>",
        "presentationml.slideMaster+xml",
        [("slideLayout", f"../slideLayouts/slideLayout{i}.xml") for i in (1, 2, 3)] + [("theme", "../theme/theme1.xml")])
    layouts = [
        ("title", "Title slide", [placeholder(2, "Title", "ctrTitle", ["Title"], frame(60, 170, 840, 110),
                                              style='<a:lvl1pPr><a:defRPr sz="5400" b="1"/></a:lvl1pPr>'),
                                  placeholder(3, "Subtitle", "subTitle", ["Subtitle"], frame(60, 290, 840, 80), 1,
                                              '<a:lvl1pPr marL="0" indent="0"><a:buNone/></a:lvl1pPr>')]),
        ("obj", "Title and content", [placeholder(2, "Title", "title", ["Title"]),
                                      placeholder(3, "Content", "", ["Text"], idx=1)]),
        ("titleOnly", "Title only", [placeholder(2, "Title", "title", ["Title"])]),
    ]
    for number, (kind, name, shapes) in enumerate(layouts, 1):
        add(f"ppt/slideLayouts/slideLayout{number}.xml",
            f'<p:sldLayout {NS} type="{kind}" preserve="1"><p:cSld name="{name}">{tree(*shapes)}</p:cSld><p:clrMapOvr>'
            "<a:masterClrMapping/></p:clrMapOvr></p:sldLayout>", "presentationml.slideLayout+xml",
            [("slideMaster", "../slideMasters/slideMaster1.xml")])


def slide(number, layout, shapes, notes=None):
    rels = [("slideLayout", f"../slideLayouts/slideLayout{layout}.xml")]
    if notes:
        rels.append(("notesSlide", f"../notesSlides/notesSlide{number}.xml"))
    add(f"ppt/slides/slide{number}.xml",
        f"<p:sld {NS}><p:cSld>{tree(*shapes)}</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>",
        "presentationml.slide+xml", rels)
    if notes:
        add(f"ppt/notesSlides/notesSlide{number}.xml",
            f"<p:notes {NS}><p:cSld>" + tree(placeholder(2, "Notes", "body", notes, frame(60, 400, 420, 300), 1))
            + "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:notes>", "presentationml.notesSlide+xml",
            [("notesMaster", "../notesMasters/notesMaster1.xml"), ("slide", f"../slides/slide{number}.xml")])


def first_slides():
    slide(1, 1, [placeholder(2, "Title", "ctrTitle", ["Team day"]),
                 placeholder(3, "Subtitle", "subTitle", ["Five ideas, two questions, five minutes"], idx=1)])
    slide(2, 3, [placeholder(2, "Title", "title", ["What shall we try first?"]),
                 box(3, "Explanation", 60, 126, 840, 110,
                     ["Press the number that fits: first the value of each idea, then its effort.",
                      "You can change it until the vote closes."], 26)],
          ["The vote starts when this slide is shown."])
    slide(3, 2, [placeholder(2, "Title", "title", ["What we try until next month"]),
                 placeholder(3, "Content", "", ["The idea with the most value for the least effort",
                                                "Who begins, and when we look at it again"], idx=1)])
    return [256, 257, 258]


def risk_slides():
    slide(1, 1, [placeholder(2, "Title", "ctrTitle", ["Harbour bridge renewal"]),
                 placeholder(3, "Subtitle", "subTitle", ["Risk workshop: what could stop us, and what we do about it"],
                             idx=1)])
    slide(2, 2, [placeholder(2, "Title", "title", ["This morning"]),
                 placeholder(3, "Content", "", ["Who is in the room", "The twenty risks that you named",
                                                "A vote on each: how likely, how bad, how soon, how well controlled",
                                                "The matrix: where do we act first?", "Owners and next steps"], idx=1)],
          ["Ask everybody to switch their keypad on, or to open the page on their phone."])
    slide(3, 3, [placeholder(2, "Title", "title", ["Who is in the room?"]),
                 box(3, "qrn_question", 60, 118, 840, 60, ["Which team do you work in?"], 28),
                 box(4, "Answers", 60, 190, 840, 190, ["1.  Design", "2.  Construction", "3.  Operations",
                                                       "4.  Finance and legal"], 26, "tx1", PANEL)])
    slide(4, 3, [placeholder(2, "Title", "title", ["Which risks matter most?"]),
                 box(3, "Explanation", 60, 126, 840, 150,
                     ["Twenty risks, four questions about each of them.",
                      "Press the number that fits. You can change it until the vote closes.",
                      "There are no wrong answers: we want to see where we differ."], 26, "tx1", PANEL)],
          ["The vote starts when this slide is shown."])
    slide(5, 2, [placeholder(2, "Title", "title", ["What we do next"]),
                 placeholder(3, "Content", "", ["An owner for each risk in the upper right corner",
                                                "A first step that can be taken within a month",
                                                "We meet again after the summer"], idx=1)])
    return [256, 257, 260, 258, 259]


def presentation(ids):
    entries = "".join(f'<p:sldId id="{sid}" r:id="rId{i + 2}"/>' for i, sid in enumerate(ids))
    notes_id = len(ids) + 2
    add("ppt/presentation.xml",
        f'<p:presentation {NS}><p:sldMasterIdLst><p:sldMasterId id="2147483648" r:id="rId1"/></p:sldMasterIdLst>'
        f'<p:notesMasterIdLst><p:notesMasterId r:id="rId{notes_id}"/></p:notesMasterIdLst><p:sldIdLst>{entries}</p:sldIdLst>'
        f'<p:sldSz cx="{WIDTH * EMU}" cy="{HEIGHT * EMU}"/><p:notesSz cx="{HEIGHT * EMU}" cy="{WIDTH * EMU}"/>'
        "</p:presentation>", "presentationml.presentation.main+xml",
        [("slideMaster", "slideMasters/slideMaster1.xml")]
        + [("slide", f"slides/slide{i}.xml") for i in range(1, len(ids) + 1)]
        + [("notesMaster", "notesMasters/notesMaster1.xml"), ("theme", "theme/theme1.xml")])
    add("ppt/notesMasters/notesMaster1.xml",
        f"<p:notesMaster {NS}><p:cSld>" + tree(placeholder(2, "Notes", "body", ["Notes"], frame(60, 400, 420, 300), 1))
        + '</p:cSld><p:clrMap bg1="lt1" tx1="dk1" bg2="lt2" tx2="dk2" accent1="accent1" accent2="accent2" '
        'accent3="accent3" accent4="accent4" accent5="accent5" accent6="accent6" hlink="hlink" folHlink="folHlink"/>'
        "</p:notesMaster>", "presentationml.notesMaster+xml", [("theme", "../theme/theme2.xml")])


def main(sample, out):
    theme(1)
    theme(2)
    master_and_layouts(LIGHT if sample == "first" else DARK)
    presentation(first_slides() if sample == "first" else risk_slides())
    types = "".join(f'<Override PartName="/{n}" ContentType="{t}"/>' for n, t in overrides)
    content = (HEAD + '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default '
               'Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Default '
               f'Extension="xml" ContentType="application/xml"/>{types}</Types>')
    root = (HEAD + '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship '
            f'Id="rId1" Type="{REL}officeDocument" Target="ppt/presentation.xml"/></Relationships>')
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as deck:
        for name, xml in [("[Content_Types].xml", content), ("_rels/.rels", root), *parts.items()]:
            info = zipfile.ZipInfo(name, (2026, 1, 5, 9, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            deck.writestr(info, xml)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
