total = 0
steps = 0
limit = 0


def main():
    global total, steps, limit
    total = 0
    steps = 0
    limit = 5000
    i = 0
    while i < @N@:
        near = total + steps
        total = total + near % 17 - i % 5
        steps = steps + 1
        if total > limit:
            total = total - limit
            steps = 0
        i = i + 1
    print(total + steps, end="")


main()
