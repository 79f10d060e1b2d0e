"""Chooses from what fuzz_request has found the requests that begin its next run, and writes them to corpus/request.

    keep_requests.py     behind ./camera test --long, in the checkout

Of requests that stand in one line, those come first that reach most for their length. What an input reaches is asked of
the target itself, by the inner step of libFuzzer's merge: its outer one would start it with system(), which runs nothing
there.
"""

import heapq
import pathlib
import subprocess
import tempfile

MOST = 400
CORPUS = pathlib.Path("fuzz/corpus/request")
FOUND = pathlib.Path("build-fuzz/work/request/inputs")
TARGET = pathlib.Path("build-fuzz/bin/fuzz_request").resolve()


def one_line_requests():
    """The texts behind the bytes of the user class and the line end; blanks to tildes only."""
    texts = {file.read_bytes()[2:] for file in FOUND.iterdir()} | set(CORPUS.read_bytes().splitlines())
    return sorted(text for text in texts if text and all(32 <= byte < 127 for byte in text))


def reached_by(texts):
    """The set of features of each text, in the order of the texts."""
    with tempfile.TemporaryDirectory(dir=FOUND.parent) as folder:
        names = [f"{number}" for number in range(len(texts))]
        for name, text in zip(names, texts):
            pathlib.Path(folder, name).write_bytes(b"\0\0" + text)
        control = pathlib.Path(folder, "control")
        control.write_text("\n".join([str(len(names)), "0", *names]) + "\n")
        options = ["-merge_inner=2", "-use_counters=0", "-merge_control_file=control"]
        subprocess.run([TARGET, *options], cwd=folder, check=True, stderr=subprocess.DEVNULL)
        lines = [line.split() for line in control.read_text().splitlines()]
    features = {int(words[1]): set(words[2:]) for words in lines if words and words[0] == "FT"}
    return [features.get(number, set()) for number in range(len(texts))]


def choose(texts, features):
    """Greedily, by what is new for the length; what was found new at first only ever shrinks."""
    def worth(number):
        return -len(features[number] - seen) / (len(texts[number]) + 20)

    seen, chosen = set(), []
    queue = [(worth(number), number) for number in range(len(texts))]
    heapq.heapify(queue)
    while queue and len(chosen) < MOST:
        promised, number = heapq.heappop(queue)
        if worth(number) > promised:
            heapq.heappush(queue, (worth(number), number))
        elif promised < 0:
            chosen.append(texts[number])
            seen |= features[number]
    print(f"{len(chosen)} of {len(texts)} requests reach {len(seen)} of {len(set().union(*features))}")
    return chosen


if __name__ == "__main__":
    found = one_line_requests()
    CORPUS.write_bytes(b"".join(text + b"\n" for text in sorted(choose(found, reached_by(found)))))
