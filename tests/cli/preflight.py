"""PDFBox's preflight, which says whether PDF files are PDF/A-1b: one Java process for any number of files.

Files in which it found nothing are noted in the folder QUILLPRESS_REFERENCES, where one is given: natively and under
the sanitizers this program makes the same ones.
"""

import hashlib
import os
import pathlib
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
    if len({os.path.basename(path) for path in paths}) < len(paths):
        raise AssertionError("two files have one name")
    notes = {path: note_of(path) for path in paths}
    unknown = [path for path, note in notes.items() if note is None or not note.exists()]
    found = reported(unknown, folder) if unknown else {}
    for path in unknown:
        if notes[path] is not None and not found[os.path.basename(path)]:
            notes[path].parent.mkdir(parents=True, exist_ok=True)
            notes[path].touch()
    return {name: texts for name, texts in found.items() if texts}


def note_of(path):
    """The file that stands for one in which nothing was found."""
    folder = os.environ.get("QUILLPRESS_REFERENCES")
    if folder is None:
        return None
    digest = hashlib.sha256("".join(f"{jar} {os.stat(jar).st_mtime_ns} " for jar in JARS).encode())
    digest.update(pathlib.Path(path).read_bytes())
    return pathlib.Path(folder) / f"{digest.hexdigest()}.archive"


def reported(paths, folder):
    """What preflight says of each file, by its name."""
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
    names = {os.path.basename(path) for path in paths}
    if set(found) != names:
        raise AssertionError(f"preflight has left out {sorted(names - set(found))}")
    return found
