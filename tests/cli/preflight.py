"""PDFBox's preflight, which says whether PDF files are PDF/A-1b: one Java process for any number of files."""

import os
import shutil
import subprocess
import xml.etree.ElementTree

JARS = [f"/usr/share/java/{name}.jar"
        for name in ("preflight", "pdfbox2", "fontbox2", "xmpbox", "commons-logging", "javax.activation", "jaxb-api")]
SECONDS = 300


def require_tools():
    """Without them nothing has been shown, which is a failure."""
    missing = [jar for jar in JARS if not os.path.exists(jar)]
    if shutil.which("java") is None:
        missing.append("java")
    if missing:
        raise AssertionError("PREFLIGHT CANNOT RUN, SO NO ARCHIVE WAS CHECKED; scripts/setup installs it. Missing: "
                             + ", ".join(missing))


def complaints(paths, folder):
    """What is wrong with the files, by their names; each has been looked at."""
    require_tools()
    names = [os.path.basename(path) for path in paths]
    if len(set(names)) < len(names):
        raise AssertionError("two files have one name")
    list_file = os.path.join(folder, "list")
    with open(list_file, "w", encoding="utf-8") as file:
        file.writelines(path + "\n" for path in paths)
    command = ["java", "-Xshare:auto", "-XX:TieredStopAtLevel=1", "-cp", ":".join(JARS),
               "org.apache.pdfbox.preflight.Validator_A1b", "xml", "group", list_file]
    process = subprocess.run(command, capture_output=True, text=True, timeout=SECONDS)
    report = list_file + ".preflight.xml"
    if process.returncode not in (0, 1) or not os.path.exists(report):
        raise AssertionError("preflight fails: " + process.stderr[-2000:])
    found = {}
    for entry in xml.etree.ElementTree.parse(report).getroot():
        texts = [f"{error.findtext('code')} {error.findtext('details')}" for error in entry.iter("error")]
        found[entry.get("name")] = [] if entry.findtext("isValid") == "true" else texts or ["not valid"]
    if set(found) != set(names):
        raise AssertionError(f"preflight has left out {sorted(set(names) - set(found))}")
    return {name: texts for name, texts in found.items() if texts}
