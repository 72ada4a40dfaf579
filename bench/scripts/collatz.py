def divisor(a, b):
    while b > 0:
        rest = a % b
        a = b
        b = rest
    return a


def main():
    total = 0
    i = 1
    while i <= @N@:
        n = i % 1000 + 1
        steps = 0
        while True:
            if n % 2 == 0:
                n = n // 2
            else:
                n = 3 * n + 1
            steps = steps + 1
            if not n > 1:
                break
        total = total + divisor(steps * 12, i)
        i = i + 1
    print(total, end="")


main()
