"""One run of a command, with limits of memory and of the processor's time, and what it took."""
import dataclasses
import os
import resource
import signal
import subprocess
import tempfile
import threading

REFUSALS = (2, 3, 4)
ADDRESS_SPACE = 2 << 30  # bytes
SLOW = 60  # seconds of the processor after which a command is ended, whatever it is at


@dataclasses.dataclass
class Result:
    code: int  # negative: the signal that ended it
    seconds: float  # of the processor, its children's too
    megabytes: float  # resident, of the largest process; at least what the system counts of the one that started it
    said: str  # on standard error

    def is_ended(self):
        """Whether the time was up."""
        return self.code in (-signal.SIGKILL, -signal.SIGXCPU)

    def problem(self, name, seconds):
        """What is wrong with this answer to the file of that name; empty if nothing is."""
        if self.code not in (0, 1, *REFUSALS):
            return f"ended with {self.code}"
        if self.seconds > seconds:
            return "took too long"
        lines = self.said.splitlines()
        if self.code in REFUSALS and not (lines and name in lines[-1] and "std::" not in self.said):
            return "said no sentence"
        return ""

    def __str__(self):
        return f"{'ended after' if self.is_ended() else f'{self.code},'} {self.seconds:.1f} s, {self.megabytes:.0f} MB"


def run(command, arguments, *, slow=SLOW, address_space=ADDRESS_SPACE, largest=resource.RLIM_INFINITY, output=os.devnull, **options):
    """Writes files of `largest` bytes at most. `output` is the name of standard output's file, None if it is closed; more
    `options` are subprocess.Popen's."""
    def bound():
        resource.setrlimit(resource.RLIMIT_AS, (address_space, address_space))
        resource.setrlimit(resource.RLIMIT_CPU, (slow, slow))
        resource.setrlimit(resource.RLIMIT_FSIZE, (largest, largest))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if output is None:
            os.close(1)

    with tempfile.TemporaryFile() as said, open(output or os.devnull, "wb") as out:
        process = subprocess.Popen([command, *map(str, arguments)], preexec_fn=bound, stdin=subprocess.DEVNULL, stdout=out, stderr=said,
                                   **options)
        alarm = threading.Timer(10 * slow, process.kill)  # it may have to wait for the processor
        alarm.start()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = 0
        alarm.cancel()
        said.seek(0)
        return Result(os.waitstatus_to_exitcode(status), usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024,
                      said.read().decode(errors="replace"))
